// The plug-in's own dialogs, laid out by font and scale. Run at several scale factors; writes a
// picture of each dialog in light and dark to build/<preset>/pictures.

#include "tellur/resources/PluginResources.h"
#include "tests/framework/widgets/CTestForms.h"
#include "tests/support/TestPaths.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QPalette>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>

#include <gtest/gtest.h>

#include <map>

namespace
{

constexpr uint32_t DIALOGS[] = {2101, 2111, 2114};

QPalette MakePalette(bool bDark)
{
    QPalette palette(bDark ? QColor(0x45, 0x45, 0x45) : QColor(0xEF, 0xEF, 0xEF),
                     bDark ? QColor(0x35, 0x35, 0x35) : QColor(0xEF, 0xEF, 0xEF));
    if (bDark)
    {
        palette.setColor(QPalette::Base, QColor(0x2A, 0x2A, 0x2A));
        palette.setColor(QPalette::AlternateBase, QColor(0x30, 0x30, 0x30));
    }
    return palette;
}

QSize GetTextSize(const QWidget& widget)
{
    QString strText;
    int iMark = 0; // the box of a check box, the frame of a button
    if (const auto* pButton = qobject_cast<const QAbstractButton*>(&widget))
    {
        strText = pButton->property("ownerDrawn").toBool() ? QString() : pButton->text();
        iMark = strText.isEmpty() ? 0 : 8;
    }
    else if (const auto* pLabel = qobject_cast<const QLabel*>(&widget))
    {
        strText = pLabel->text();
    }
    else if (const auto* pGroup = qobject_cast<const QGroupBox*>(&widget))
    {
        strText = pGroup->title();
    }
    const QFontMetrics metrics = widget.fontMetrics();
    return {metrics.horizontalAdvance(strText) + iMark, strText.isEmpty() ? 0 : metrics.height()};
}

// Controls and group boxes, which have names or titles.
QList<QWidget*> GetPlaced(const QWidget& content)
{
    QList<QWidget*> placed;
    for (QWidget* pWidget : content.findChildren<QWidget*>())
    {
        if (!pWidget->objectName().isEmpty() && !pWidget->objectName().startsWith("qt_"))
        {
            placed.append(pWidget);
        }
    }
    return placed;
}

void ExpectWholeAndApart(const QWidget& content)
{
    const QList<QWidget*> placed = GetPlaced(content);
    EXPECT_GT(placed.size(), 2);
    for (const QWidget* pWidget : placed)
    {
        SCOPED_TRACE(pWidget->objectName().toStdString());
        EXPECT_GE(pWidget->width(), GetTextSize(*pWidget).width());
        EXPECT_GE(pWidget->height(), GetTextSize(*pWidget).height());
        EXPECT_TRUE(pWidget->parentWidget()->rect().contains(pWidget->geometry()));
        for (const QWidget* pOther : placed)
        {
            const bool bApart = pOther == pWidget ||
                                pOther->parentWidget() != pWidget->parentWidget() ||
                                !pOther->geometry().intersects(pWidget->geometry());
            EXPECT_TRUE(bApart) << "over " << pOther->objectName().toStdString();
        }
    }
}

void SavePicture(QWidget& widget, const std::string& strName)
{
    const QString strFolder = TELLUR_BIN_DIR "/../pictures";
    QDir().mkpath(strFolder);
    const QString strPath = QString("%1/%2-%3.png")
                                .arg(strFolder, QString::fromStdString(strName))
                                .arg(widget.devicePixelRatioF() * 100);
    EXPECT_TRUE(widget.grab().save(strPath)) << strPath.toStdString();
}

// The sliders of one dialog stand in line in each of its columns.
void ExpectAligned(const QWidget& content)
{
    std::map<int, int> lefts; // by the left side of the group
    for (const QSlider* pSlider : content.findChildren<QSlider*>())
    {
        const int iGroup = pSlider->parentWidget()->mapTo(&content, QPoint()).x();
        const auto [line, bFirst] = lefts.emplace(iGroup, pSlider->x());
        EXPECT_EQ(line->second, pSlider->x()) << pSlider->objectName().toStdString();
    }
}

class CFormLayout : public testing::TestWithParam<uint32_t>
{
protected:
    void TearDown() override { QApplication::setPalette(MakePalette(false)); }

    CResourceScope m_Scope{&GetPluginResources()};
};

} // namespace

TEST_P(CFormLayout, CutsNoTextAndScrollsWhereItIsTooNarrow)
{
    for (const bool bDark : {false, true})
    {
        QApplication::setPalette(MakePalette(bDark));
        CTestView view(GetParam());
        ASSERT_TRUE(view.Create(nullptr));
        auto* pArea = qobject_cast<QScrollArea*>(GetWidget(view));
        ASSERT_NE(pArea, nullptr);
        const QSize size = pArea->widget()->sizeHint();
        pArea->resize(size + QSize(2, 2));
        view.ShowWindow(true);
        QApplication::processEvents();
        ExpectWholeAndApart(*pArea->widget());
        ExpectAligned(*pArea->widget());
        EXPECT_FALSE(pArea->horizontalScrollBar()->isVisible());
        SavePicture(*pArea, std::to_string(GetParam()) + (bDark ? "-dark" : "-light"));

        pArea->resize(150, 400);
        QApplication::processEvents();
        ExpectWholeAndApart(*pArea->widget());
        EXPECT_TRUE(pArea->horizontalScrollBar()->isVisible());
        EXPECT_TRUE(pArea->verticalScrollBar()->isVisible());
        pArea->resize(size * 2);
        QApplication::processEvents();
        EXPECT_EQ(pArea->widget()->size(), pArea->viewport()->size());
        ExpectWholeAndApart(*pArea->widget());
        EXPECT_FALSE(pArea->horizontalScrollBar()->isVisible());
    }
}

INSTANTIATE_TEST_SUITE_P(Dialogs, CFormLayout, testing::ValuesIn(DIALOGS));
