#include "host/Log.h"
#include "tests/editor/app/EditorFixture.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QApplication>
#include <QDialog>
#include <QDockWidget>
#include <QLabel>
#include <QListWidget>
#include <QPalette>

#include <algorithm>
#include <cmath>
#include <map>

namespace
{

constexpr double LEAST_CONTRAST = 4.5; // of small text, as the guidelines for readers ask for

double GetLinear(double fChannel)
{
    return fChannel <= 0.04045 ? fChannel / 12.92 : std::pow((fChannel + 0.055) / 1.055, 2.4);
}

double GetLuminance(QRgb uColor)
{
    return 0.2126 * GetLinear(qRed(uColor) / 255.0) + 0.7152 * GetLinear(qGreen(uColor) / 255.0) +
           0.0722 * GetLinear(qBlue(uColor) / 255.0);
}

double GetContrast(QRgb uOne, QRgb uOther)
{
    const auto [fLow, fHigh] = std::minmax({GetLuminance(uOne), GetLuminance(uOther)});
    return (fHigh + 0.05) / (fLow + 0.05);
}

// Of what is written on it: the most frequent colour is the ground, and the one that differs most
// from it the middle of a stroke.
double MeasureContrast(const QImage& picture)
{
    std::map<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y)
    {
        for (int x = 0; x < picture.width(); ++x)
        {
            ++counts[picture.pixel(x, y)];
        }
    }
    const auto ground =
        std::max_element(counts.begin(),
                         counts.end(),
                         [](const auto& a, const auto& b) { return a.second < b.second; });
    double fMost = 1.0;
    for (const auto& [uColor, nPixels] : counts)
    {
        fMost = std::max(fMost, GetContrast(ground->first, uColor));
    }
    return fMost;
}

std::string Describe(const QWidget& widget)
{
    std::string strText = widget.metaObject()->className();
    for (const QWidget* p = &widget; p != nullptr; p = p->parentWidget())
    {
        if (!p->objectName().isEmpty())
        {
            strText += " in " + p->objectName().toStdString();
        }
    }
    return strText;
}

// What a reader of the screen says, and what an eye sees, of all that the window and its dialogs
// show.
class CAccessible : public CEditorFixture
{
protected:
    void StartWithAllDocks()
    {
        ASSERT_NO_FATAL_FAILURE(Start());
        ASSERT_NO_FATAL_FAILURE(TakeBrush());
        GetHost().SwitchPanel();
        Settle();
    }

    // Shows one dock after the other, since they lie over one another.
    void ForEachDock(const std::function<void(QWidget&)>& look)
    {
        for (QDockWidget* pDock : m_Window->findChildren<QDockWidget*>())
        {
            pDock->show();
            pDock->raise();
            Settle();
            look(*pDock);
        }
    }

    void ForEachDialog(const std::function<void(QWidget&)>& look)
    {
        for (const char* pszCommand : {"edit.keys",
                                       "edit.settings",
                                       "file.new",
                                       "level.properties",
                                       "level.new_bitmap",
                                       "brush.pen"})
        {
            if (m_Window->GetCommands().Find(pszCommand) == nullptr)
            {
                ADD_FAILURE() << "no command " << pszCommand;
                continue;
            }
            Answer<QDialog>([&] { Trigger(pszCommand); },
                            [&](QDialog& dialog)
                            {
                                Settle();
                                look(dialog);
                                dialog.reject();
                            });
        }
    }

    static std::string FindNameless(const QWidget& root)
    {
        std::string strNameless;
        for (QWidget* pWidget : root.findChildren<QWidget*>())
        {
            const bool bControl = (pWidget->focusPolicy() & Qt::TabFocus) != 0 &&
                                  pWidget->isVisible() && pWidget->isEnabled() &&
                                  pWidget->focusProxy() == nullptr;
            QAccessibleInterface* pFace = QAccessible::queryAccessibleInterface(pWidget);
            if (bControl && (pFace == nullptr || pFace->text(QAccessible::Name).isEmpty()))
            {
                strNameless += Describe(*pWidget) + "\n";
            }
        }
        return strNameless;
    }

    static std::string FindFaint(QWidget& root)
    {
        std::string strFaint;
        for (QWidget* pWidget : root.findChildren<QWidget*>())
        {
            const auto* pLabel = qobject_cast<const QLabel*>(pWidget);
            const auto* pButton = qobject_cast<const QAbstractButton*>(pWidget);
            if (pWidget->property("ownerDrawn").toBool()) // a picture; the text is its name
            {
                continue;
            }
            const bool bText =
                (pLabel != nullptr && !pLabel->text().isEmpty()) ||
                (pButton != nullptr && !pButton->text().isEmpty() && pButton->icon().isNull());
            if (!bText || !pWidget->isVisible() || !pWidget->isEnabled() || pWidget->width() < 4 ||
                pWidget->height() < 4)
            {
                continue;
            }
            const double fContrast = MeasureContrast(pWidget->grab().toImage());
            if (fContrast < LEAST_CONTRAST)
            {
                strFaint += Describe(*pWidget) + ": " + std::to_string(fContrast) + "\n";
            }
        }
        return strFaint;
    }
};

} // namespace

TEST_F(CAccessible, EveryControlHasAName)
{
    ASSERT_NO_FATAL_FAILURE(StartWithAllDocks());
    const auto look = [](QWidget& root)
    {
        EXPECT_EQ(FindNameless(root), "") << Describe(root);
    };
    ForEachDock(look);
    ForEachDialog(look);
    look(*m_Window);
}

TEST_F(CAccessible, TextStandsOutInALightAndInADarkTheme)
{
    const QPalette before = QApplication::palette();
    ASSERT_NO_FATAL_FAILURE(StartWithAllDocks());
    for (const bool bDark : {false, true})
    {
        SCOPED_TRACE(bDark ? "dark" : "light");
        QApplication::setPalette(bDark ? QPalette(QColor(53, 53, 53), QColor(45, 45, 45)) : before);
        CrashLog("[CSomething::DoIt] a fault\n"); // the bar of faults
        Drag(GetView(), {0.4, 0.5}, {0.5, 0.5}, 3);
        Key("ctrl+z"); // a step that can be redone
        Settle();
        const auto look = [](QWidget& root)
        {
            EXPECT_EQ(FindFaint(root), "") << Describe(root);
        };
        ForEachDock(look);
        ForEachDialog(look);
        look(*m_Window);
        for (const QListWidget* pList : m_Window->findChildren<QListWidget*>())
        {
            for (int i = 0; i < pList->count(); ++i)
            {
                const QListWidgetItem& item = *pList->item(i);
                const QColor text = item.foreground().style() == Qt::NoBrush
                                        ? pList->palette().color(QPalette::Text)
                                        : item.foreground().color();
                EXPECT_GE(GetContrast(text.rgb(), pList->palette().color(QPalette::Base).rgb()),
                          LEAST_CONTRAST)
                    << Describe(*pList) << ": " << item.text().toStdString();
            }
        }
    }
    QApplication::setPalette(before);
}
