#include "editor/app/CCommandList.h"

#include "editor/app/KeyChords.h"
#include "editor/core/Words.h"

#include <QAction>
#include <QMenu>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace
{

// What a button of it says: the command and its key.
void SetTip(QAction& action)
{
    const QString strKey = action.shortcut().toString(QKeySequence::NativeText);
    const QString strText = action.text().remove('&').remove("...");
    action.setToolTip(strKey.isEmpty() ? strText : strText + " (" + strKey + ")");
}

} // namespace

SCommand SCommand::Run(const char* pszId,
                       const char* pszText,
                       SKeyChord key,
                       std::function<void()> run,
                       std::function<bool()> isEnabled)
{
    return {pszId, pszText, key, std::move(run), std::move(isEnabled)};
}

SCommand
SCommand::Once(const char* pszId, const char* pszText, SKeyChord key, std::function<void()> run)
{
    return {.pszId = pszId, .pszText = pszText, .key = key, .run = std::move(run), .bOnce = true};
}

SCommand SCommand::Hold(const char* pszId, const char* pszText, SKeyChord key)
{
    return {pszId, pszText, key};
}

CCommandList::CCommandList(QWidget& window, CKeyBindings& keys)
    : m_Window(window)
    , m_Keys(keys)
{
}

void CCommandList::Add(QMenu& menu, std::initializer_list<SCommand> commands)
{
    for (const SCommand& command : commands)
    {
        if (command.pszId == nullptr)
        {
            menu.addSeparator();
            continue;
        }
        if (command.run != nullptr)
        {
            menu.addAction(MakeAction(command));
        }
        SKeyCommand key;
        key.strId = command.pszId;
        key.strText =
            QString::fromUtf8(Words(command.pszText)).remove('&').remove("...").toStdString();
        key.defaultKey = command.key;
        m_Keys.Add(key);
    }
}

QAction* CCommandList::MakeAction(const SCommand& command)
{
    auto* pAction = new QAction(QString::fromUtf8(Words(command.pszText)), &m_Window);
    pAction->setObjectName(command.pszId);
    pAction->setAutoRepeat(!command.bOnce && command.isChecked == nullptr);
    if (command.isChecked != nullptr)
    {
        pAction->setCheckable(true);
        pAction->setChecked(command.isChecked());
    }
    QObject::connect(pAction,
                     &QAction::triggered,
                     &m_Window,
                     [pShown = QPointer<QAction>(pAction), command]
                     {
                         command.run();
                         // A click turns the mark over, whatever it came to.
                         if (pShown != nullptr && command.isChecked != nullptr)
                         {
                             pShown->setChecked(command.isChecked());
                         }
                     });
    // The window's own, so that its key works wherever the keyboard is in the window.
    m_Window.addAction(pAction);
    m_Shown[command.pszId] = {pAction, command};
    return pAction;
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
        m_Shown[command.strId] = {pAction, {}};
    }
}

void CCommandList::NeedLevel(std::initializer_list<const char*> beginnings,
                             const std::function<bool()>& hasLevel)
{
    for (auto& [strId, shown] : m_Shown)
    {
        const bool bNeeds = std::any_of(beginnings.begin(),
                                        beginnings.end(),
                                        [&strId = strId](const char* pszBeginning)
                                        { return strId.starts_with(pszBeginning); });
        if (bNeeds)
        {
            shown.command.isEnabled = [hasLevel, isEnabled = shown.command.isEnabled]
            {
                return hasLevel() && (isEnabled == nullptr || isEnabled());
            };
        }
    }
}

void CCommandList::ApplyKeys()
{
    for (const auto& [strId, shown] : m_Shown)
    {
        const SKeyCommand* pCommand = m_Keys.FindById(strId);
        if (pCommand != nullptr)
        {
            shown.pAction->setShortcut(GetSequence(pCommand->key));
            SetTip(*shown.pAction);
        }
    }
}

void CCommandList::Follow()
{
    for (const auto& [strId, shown] : m_Shown)
    {
        if (shown.command.isEnabled != nullptr)
        {
            shown.pAction->setEnabled(shown.command.isEnabled());
        }
        if (shown.command.isChecked != nullptr)
        {
            shown.pAction->setChecked(shown.command.isChecked());
        }
        if (shown.command.getText != nullptr)
        {
            shown.pAction->setText(QString::fromUtf8(Words(shown.command.getText())));
            SetTip(*shown.pAction);
        }
    }
}

QAction* CCommandList::Find(const char* pszId) const
{
    const auto found = m_Shown.find(pszId);
    return found != m_Shown.end() ? found->second.pAction : nullptr;
}
