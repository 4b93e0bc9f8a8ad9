#pragma once

#include "tests/tellur/proplist/PropListFixture.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

using Texts = std::vector<std::string>;

// Works the in-place editors with mouse and keys.
class CEditing : public CPropListTest
{
protected:
    void Type(const char* pszText)
    {
        auto* pEdit = Editor<QLineEdit>();
        ASSERT_NE(pEdit, nullptr);
        pEdit->selectAll();
        QTest::keyClicks(pEdit, pszText);
    }

    void Enter(const char* pszText)
    {
        ASSERT_NO_FATAL_FAILURE(Type(pszText));
        QTest::keyClick(Editor<QLineEdit>(), Qt::Key_Return);
    }

    std::string Typed() { return Editor<QLineEdit>()->text().toStdString(); }

    // The spin of the row under edit: it has no type of its own to look for.
    QWidget* Spin()
    {
        for (QWidget* pWidget : View()->viewport()->findChildren<QWidget*>())
        {
            const bool bOther = qobject_cast<QLineEdit*>(pWidget) != nullptr ||
                                qobject_cast<QPushButton*>(pWidget) != nullptr ||
                                qobject_cast<QComboBox*>(pWidget) != nullptr;
            if (pWidget->isVisible() && !bOther && pWidget->parent() == View()->viewport())
            {
                return pWidget;
            }
        }
        return nullptr;
    }

    // Presses the spin, moves to the heights of the screen in turn, lets go.
    void DragSpin(const std::vector<int>& heights)
    {
        QWidget* pSpin = Spin();
        ASSERT_NE(pSpin, nullptr);
        const int iX = pSpin->mapToGlobal(QPoint(0, 0)).x() - 50; // beside it
        const auto send = [&](QEvent::Type eType, const QPoint& local, const QPoint& screen)
        {
            QMouseEvent event(eType,
                              QPointF(local),
                              QPointF(screen),
                              eType == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                              Qt::LeftButton,
                              Qt::NoModifier);
            QApplication::sendEvent(pSpin, &event);
        };
        send(QEvent::MouseButtonPress, {3, 2}, {iX, heights.front()});
        for (size_t i = 1; i < heights.size(); ++i)
        {
            send(QEvent::MouseMove, {-50, 0}, {iX, heights[i]});
        }
        send(QEvent::MouseButtonRelease, {-50, 0}, {iX, heights.back()});
    }
};
