// What the window and its dialogs look like at the sizes, scales and themes that people have:
// nothing leaves the screen, and no text is cut. Each state leaves a picture in pictures/states.

#include "tests/editor/app/DocumentsFixture.h"

#include <QAbstractScrollArea>
#include <QDir>
#include <QDockWidget>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QToolButton>

#include <array>

namespace
{

class CWindowStates : public CDocuments
{
protected:
    CWindowStates()
    {
        m_bTools = true;
        m_bWelcome = true;
        m_Before = QApplication::palette();
    }

    ~CWindowStates() override { QApplication::setPalette(m_Before); }

    // Themes are named by what they are: the palette of the style, and a dark one.
    void Begin(const char* pszTheme, bool bLevel)
    {
        Stop();
        std::filesystem::remove_all(m_Folder.Path("config")); // each is a first start
        std::filesystem::remove_all(m_Folder.Path("state"));
        m_Theme = pszTheme;
        QApplication::setPalette(
            m_Theme == "dark" ? QPalette(QColor(53, 53, 53), QColor(45, 45, 45)) : m_Before);
        ASSERT_NO_FATAL_FAILURE(Start(false));
        m_Window->resize(m_Window->screen()->availableSize());
        Settle();
        if (bLevel)
        {
            m_Window->GetDocuments().OpenFile(TELLUR_SOURCE_DIR "/data/samples/valley.height");
            Settle();
        }
    }

    // Looks at what stands on the screen; keeps its picture.
    void Look(QWidget& shown, const char* pszState)
    {
        SCOPED_TRACE(m_Theme + " " + pszState);
        Settle();
        const QScreen& screen = *m_Window->screen();
        const QRect room = screen.availableGeometry();
        const QRect at = shown.frameGeometry();
        EXPECT_TRUE(room.contains(at))
            << at.x() << ", " << at.y() << ", " << at.width() << " x " << at.height() << " of "
            << room.width() << " x " << room.height();
        EXPECT_EQ(FindCut(shown), "");
        QDir().mkpath("pictures/states");
        const QString strName = QString("pictures/states/%1x%2-%3-%4-%5.png")
                                    .arg(std::lround(room.width() * screen.devicePixelRatio()))
                                    .arg(std::lround(room.height() * screen.devicePixelRatio()))
                                    .arg(std::lround(screen.devicePixelRatio() * 100))
                                    .arg(m_Theme.c_str())
                                    .arg(pszState);
        EXPECT_TRUE(m_Window->screen()->grabWindow(0).save(strName));
    }

    void LookAtDialog(const char* pszCommand, const char* pszState)
    {
        Answer<QDialog>([&] { Trigger(pszCommand); },
                        [&](QDialog& dialog)
                        {
                            Look(dialog, pszState);
                            dialog.reject();
                        });
        Settle();
    }

    // Every text that has less room than it needs, and every control that its parent cuts.
    static std::string FindCut(const QWidget& root)
    {
        std::string strCut;
        for (const QWidget* pWidget : root.findChildren<QWidget*>())
        {
            const QWidget* pParent = pWidget->parentWidget();
            if (!pWidget->isVisible() || pWidget->isWindow() || IsScrolled(*pWidget) ||
                IsBehind(*pWidget) || IsPicture(*pWidget))
            {
                continue;
            }
            const auto* pLabel = qobject_cast<const QLabel*>(pWidget);
            const auto* pButton = qobject_cast<const QAbstractButton*>(pWidget);
            const QString strText = pLabel != nullptr    ? pLabel->text()
                                    : pButton != nullptr ? pButton->text()
                                                         : QString();
            const bool bHidden =
                !strText.isEmpty() && !pParent->rect().contains(pWidget->geometry());
            if (bHidden || (!strText.isEmpty() && GetNeeded(*pWidget, strText) > GetRoom(*pWidget)))
            {
                strCut += "\"" + strText.left(60).toStdString() + "\" of " +
                          pParent->objectName().toStdString() + "\n";
            }
        }
        return strCut;
    }

private:
    // In a dock whose tab is not the one that shows.
    static bool IsBehind(const QWidget& widget)
    {
        for (const QWidget* p = &widget; p != nullptr; p = p->parentWidget())
        {
            if (qobject_cast<const QDockWidget*>(p) != nullptr)
            {
                return p->visibleRegion().isEmpty();
            }
        }
        return false;
    }

    static bool IsPicture(const QWidget& widget) // whose text is a name that is not shown
    {
        const auto* pButton = qobject_cast<const QToolButton*>(&widget);
        return pButton != nullptr && pButton->toolButtonStyle() == Qt::ToolButtonIconOnly;
    }

    static bool IsScrolled(const QWidget& widget)
    {
        const auto* pArea =
            qobject_cast<const QAbstractScrollArea*>(widget.parentWidget()->parentWidget());
        return pArea != nullptr && pArea->viewport() == widget.parentWidget();
    }

    // Along the line, or down where a label breaks its lines.
    static int GetNeeded(const QWidget& widget, const QString& strText)
    {
        const auto* pLabel = qobject_cast<const QLabel*>(&widget);
        if (pLabel != nullptr)
        {
            return pLabel->wordWrap() ? pLabel->heightForWidth(pLabel->width())
                                      : pLabel->sizeHint().width();
        }
        return widget.fontMetrics().size(Qt::TextShowMnemonic, strText).width();
    }

    static int GetRoom(const QWidget& widget)
    {
        const auto* pLabel = qobject_cast<const QLabel*>(&widget);
        return pLabel != nullptr && pLabel->wordWrap() ? widget.height() : widget.width();
    }

    QPalette m_Before;
    std::string m_Theme;
};

} // namespace

TEST_F(CWindowStates, NothingIsCutAndNothingLeavesTheScreen)
{
    for (const char* pszTheme : {"light", "dark"})
    {
        ASSERT_NO_FATAL_FAILURE(Begin(pszTheme, false));
        Look(*m_Window, "start");
        ASSERT_NO_FATAL_FAILURE(Begin(pszTheme, true));
        Look(*m_Window, "level");
        Drag(GetView(), {0.4, 0.5}, {0.6, 0.6}, 6);
        Look(*m_Window, "stroke");
        Trigger("view.four");
        Trigger("measure.steep");
        Look(*m_Window, "four-views");
        Trigger("edit.undo"); // there is nothing to be saved
        Trigger("view.reset");
        m_Window->findChild<QDockWidget*>("light")->show();
        m_Window->findChild<QDockWidget*>("light")->raise();
        Look(*m_Window, "light");
        Trigger("library.show");
        Look(*m_Window, "library");
        for (const auto& [pszCommand, pszState] : {std::pair{"file.new", "new"},
                                                   {"file.export", "export"},
                                                   {"level.properties", "properties"},
                                                   {"level.new_bitmap", "new-bitmap"},
                                                   {"edit.keys", "keys"},
                                                   {"edit.settings", "settings"},
                                                   {"brush.pen", "pen"},
                                                   {"help.about", "about"}})
        {
            LookAtDialog(pszCommand, pszState);
        }
        WriteBytes(m_Folder.Path("corners.asc"),
                   "ncols 5\nnrows 3\nxllcorner 600000\nyllcorner 5100000\ncellsize 10\n"
                   "100 50 50 50 200\n50 50 50 50 50\n300 50 50 50 400\n");
        Answer<CImportDialog>([&]
                              { m_Window->GetDocuments().OpenFile(m_Folder.Path("corners.asc")); },
                              [&](CImportDialog& dialog)
                              {
                                  Look(dialog, "import");
                                  dialog.reject();
                              });
    }
}
