#include "editor/app/CLibraryCommands.h"

#include "editor/app/CBrushLibraryDock.h"
#include "editor/app/CCommandList.h"
#include "editor/app/CViewArea.h"
#include "editor/app/KeyChords.h"

#include <QApplication>
#include <QMenu>

CLibraryCommands::CLibraryCommands(CBrushLibraryDock& library, CViewArea& views)
    : m_Library(library)
    , m_Views(views)
{
}

void CLibraryCommands::AddTo(QMenu& menu, CCommandList& commands)
{
    commands.Add(menu,
                 {
                     SCommand::Line(),
                     SCommand::Run(
                         "library.show",
                         "&Brush library and back",
                         Key(Qt::Key_F4),
                         [this] { GoToLibrary(); },
                         [this] { return m_Library.HasLibrary(); }),
                 });
}

// As the panel's key: the keyboard goes there, and from there back to the view.
void CLibraryCommands::GoToLibrary()
{
    if (m_Library.isAncestorOf(QApplication::focusWidget()))
    {
        m_Views.GetActive()->setFocus();
        return;
    }
    m_Library.TakeFocus();
}
