#include "editor/app/GuidePages.h"

#include "editor/app/CBrushLibraryDock.h"
#include "editor/app/CHistoryDock.h"
#include "editor/app/CImportDialog.h"
#include "editor/app/CKeyListDialog.h"
#include "editor/app/CKeysDialog.h"
#include "editor/app/CMessagesDock.h"
#include "editor/app/CNewLevelDialog.h"
#include "editor/app/CPanelDock.h"
#include "editor/app/CPenDialog.h"
#include "editor/app/CSettingsDialog.h"
#include "editor/app/CStartPage.h"
#include "editor/app/CViewWidget.h"
#include "editor/core/Words.h"

#include <QFileDialog>
#include <QWidget>

namespace
{

constexpr char WHOLE_EDITOR[] = "the-level-editor";

template <class TWidget> bool IsA(const QWidget& widget)
{
    return dynamic_cast<const TWidget*>(&widget) != nullptr;
}

// The plug-in's dialogs, and those for numbers of any kind, are told by their titles.
template <const char* pszBeginning> bool IsTitled(const QWidget& widget)
{
    return widget.isWindow() && widget.windowTitle().startsWith(Words(pszBeginning));
}

constexpr char DRAW_TITLE[] = "Edit bitmap";
constexpr char SLOPES_TITLE[] = "Protect slopes";
constexpr char HEIGHTS_TITLE[] = "Protect heights";
constexpr char GROW_TITLE[] = "Grow protection";
constexpr char TURNS_TITLE[] = "Turned strokes";

struct SGuidePage
{
    bool (*isMeant)(const QWidget& widget);
    const char* pszHeading;
};

constexpr SGuidePage PAGES[] = {
    {&IsA<CPanelDock>, "the-tool-panel"},
    {&IsA<CBrushLibraryDock>, "the-brush-library"},
    {&IsA<CHistoryDock>, "undo"},
    {&IsA<CMessagesDock>, "when-something-does-not-work"},
    {&IsA<CStartPage>, "your-first-five-minutes"},
    {&IsA<CNewLevelDialog>, "your-first-five-minutes"},
    {&IsA<CImportDialog>, "levels-from-real-elevation"},
    {&IsA<CKeyListDialog>, "keys"},
    {&IsA<CKeysDialog>, "keys"},
    {&IsA<QFileDialog>, "levels-recordings-autosaves"},
    {&IsA<CPenDialog>, "a-pen-and-a-brush-that-turns"},
    {&IsA<CSettingsDialog>, WHOLE_EDITOR},
    {&IsA<CViewWidget>, WHOLE_EDITOR},
    {&IsTitled<DRAW_TITLE>, "painting-terrain-types"},
    {&IsTitled<SLOPES_TITLE>, "protected-ground"},
    {&IsTitled<HEIGHTS_TITLE>, "protected-ground"},
    {&IsTitled<GROW_TITLE>, "protected-ground"},
    {&IsTitled<TURNS_TITLE>, "symmetry-building-up-paths"},
};

} // namespace

QString FindGuidePage(const QWidget* pWidget)
{
    for (; pWidget != nullptr; pWidget = pWidget->parentWidget())
    {
        for (const SGuidePage& page : PAGES)
        {
            if (page.isMeant(*pWidget))
            {
                return page.pszHeading;
            }
        }
        if (pWidget->isWindow())
        {
            break; // what lies behind a dialog is not meant
        }
    }
    return WHOLE_EDITOR;
}

QStringList GetGuidePages()
{
    QStringList pages;
    for (const SGuidePage& page : PAGES)
    {
        pages << page.pszHeading;
    }
    pages.removeDuplicates();
    return pages;
}

QString MakeAnchor(const QString& strHeading)
{
    QString strAnchor;
    for (const QChar character : strHeading)
    {
        const bool bWord = character.isLetterOrNumber() || character == '-' || character == '_';
        if (bWord || character == ' ')
        {
            strAnchor += bWord ? character.toLower() : QChar('-');
        }
    }
    return strAnchor;
}
