#include "editor/app/CCommandList.h"

#include "editor/app/KeyChords.h"

#include <QAction>
#include <QMenu>

#include <utility>

CCommandList::CCommandList(QWidget& window, CKeyBindings& keys)
    : m_Window(window)
    , m_Keys(keys)
{
}

QAction*
CCommandList::Add(QMenu* pMenu, const char* pszId, const char* pszText, SKeyChord key, FRun run)
{
    auto* pAction = new QAction(QString::fromUtf8(pszText), &m_Window);
    pAction->setObjectName(pszId);
    QObject::connect(pAction, &QAction::triggered, &m_Window, [run = std::move(run)] { run(); });
    if (pMenu != nullptr)
    {
        pMenu->addAction(pAction);
    }
    m_Window.addAction(pAction);
    m_Actions[pszId] = pAction;
    SKeyCommand command;
    command.strId = pszId;
    command.strText = QString::fromUtf8(pszText).remove('&').remove("...").toStdString();
    command.defaultKey = key;
    m_Keys.Add(command);
    return pAction;
}

void CCommandList::AddHeld(const char* pszId, const char* pszText, SKeyChord key)
{
    SKeyCommand command;
    command.strId = pszId;
    command.strText = pszText;
    command.defaultKey = key;
    m_Keys.Add(command);
}

void CCommandList::AddPluginActions(const std::function<void(int32_t)>& onAction)
{
    for (const SKeyCommand& command : m_Keys.GetCommands())
    {
        if (command.iAction < 0)
        {
            continue;
        }
        auto* pAction = new QAction(QString::fromStdString(command.strText), &m_Window);
        const int32_t iAction = command.iAction;
        QObject::connect(
            pAction, &QAction::triggered, &m_Window, [onAction, iAction] { onAction(iAction); });
        m_Window.addAction(pAction);
        m_Actions[command.strId] = pAction;
    }
}

void CCommandList::ApplyKeys()
{
    for (const auto& [strId, pAction] : m_Actions)
    {
        const SKeyCommand* pCommand = m_Keys.FindById(strId);
        if (pCommand != nullptr)
        {
            pAction->setShortcut(GetSequence(pCommand->key));
        }
    }
}

QAction* CCommandList::Find(const char* pszId) const
{
    const auto found = m_Actions.find(pszId);
    return found != m_Actions.end() ? found->second : nullptr;
}
