#include "editor/app/CRecoveryOffer.h"

#include "editor/app/CDocumentQuestions.h"
#include "editor/app/CEditor.h"
#include "editor/app/SLevelViews.h"
#include "editor/core/Words.h"
#include "host/Log.h"

#include <QDateTime>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace
{

const std::string& GetFile(const SRecoverable& entry) // that a person opens; empty for none
{
    const SLevelText& level = entry.text.level;
    return level.strPath.empty() ? level.strHeightMap : level.strPath;
}

QString DescribeKept(const SRecoverable& entry)
{
    const std::string& strPath = GetFile(entry);
    const QString strName = strPath.empty() ? QString(Words("a level that was never saved"))
                                            : QString::fromStdString(strPath);
    const auto nSteps = static_cast<qulonglong>(CountHistorySteps(entry, entry.steps.size()));
    const QString strSteps =
        QString(nSteps == 1 ? Words("%1 step") : Words("%1 steps")).arg(nSteps);
    const QString strKept = !entry.text.IsCopy() ? strSteps
                            : nSteps == 0        ? QString(Words("a copy"))
                                          : QString(Words("a copy and %1 after it")).arg(strSteps);
    return QString(Words("The editor did not end properly. It kept %1 of\n%2\nuntil %3."))
        .arg(strKept, strName, QDateTime::fromSecsSinceEpoch(entry.iWritten).toString());
}

// What was saved after it; empty for nothing.
QString DescribeSince(const SRecoverable& entry)
{
    QStringList sentences;
    if (entry.bSavedSince)
    {
        sentences << Words(
            "The level has been saved since then. Recovering does not change its files.");
    }
    if (entry.bBitmapSavedSince)
    {
        sentences << QString(
                         Words("%1 has been saved since then. A copy of that is kept beside it."))
                         .arg(QString::fromStdString(entry.text.strBitmap));
    }
    if (!entry.strLeftOut.empty())
    {
        sentences << QString(
                         Words("%1 has been saved since then: what was painted on it is left out."))
                         .arg(QString::fromStdString(entry.strLeftOut));
    }
    return sentences.join(' ');
}

} // namespace

CRecoveryOffer::CRecoveryOffer(CEditor& editor,
                               CDocumentQuestions& questions,
                               std::function<void()> onLevel)
    : m_Editor(editor)
    , m_Questions(questions)
    , m_OnLevel(std::move(onLevel))
{
}

bool CRecoveryOffer::OfferAll()
{
    for (const std::string& strPart : CRecorder::TakeInterrupted())
    {
        WarnLog("[CRecorder] the editor ended while it recorded; what it had is in %s\n",
                strPart.c_str());
    }
    if (m_Editor.GetAutosave().IsChanged())
    {
        return false; // what opening a level has given back would go for another level's
    }
    for (const SRecoverable& entry : FindRecoverable(m_Editor.GetRecentFiles().GetPaths()))
    {
        const bool bAsked =
            std::find(m_Later.begin(), m_Later.end(), entry.strStem) != m_Later.end();
        if (!bAsked && Offer(entry))
        {
            return true;
        }
    }
    return false;
}

bool CRecoveryOffer::OfferOf(const std::string& strLevel)
{
    std::error_code error;
    const std::filesystem::path level = std::filesystem::weakly_canonical(strLevel, error);
    for (const SRecoverable& entry : FindRecoverable({level.string()}))
    {
        const std::string& strFile = GetFile(entry);
        // The level may have been opened by another name, through a link.
        if (!strFile.empty() && std::filesystem::weakly_canonical(strFile, error) == level &&
            Offer(entry))
        {
            return true;
        }
    }
    return false;
}

bool CRecoveryOffer::Offer(const SRecoverable& entry)
{
    QMessageBox box(QMessageBox::Question,
                    Words("Recover"),
                    DescribeKept(entry),
                    QMessageBox::NoButton,
                    &m_Questions.GetWindow());
    box.setTextFormat(Qt::PlainText);
    const QAbstractButton* pRecover = nullptr;
    if (entry.strFault.empty())
    {
        pRecover = box.addButton(Words("Recover"), QMessageBox::AcceptRole);
        box.setInformativeText(DescribeSince(entry));
    }
    else
    {
        box.setInformativeText(Words("This cannot be given back: ") +
                               QString::fromStdString(entry.strFault) + ".");
    }
    const QAbstractButton* pDiscard = box.addButton(Words("Discard"), QMessageBox::DestructiveRole);
    QPushButton* pLater = box.addButton(Words("Later"), QMessageBox::RejectRole);
    if (pRecover == nullptr)
    {
        box.setDefaultButton(pLater); // not what throws them away
    }
    box.exec();
    if (box.clickedButton() == pDiscard)
    {
        CAutosave::Discard(entry);
        SLevelViews::Remove(entry.strStem);
        return false;
    }
    if (pRecover == nullptr || box.clickedButton() != pRecover)
    {
        m_Later.push_back(entry.strStem);
        return false;
    }
    if (!m_Questions.Report(m_Recover(entry), Words("The level cannot be recovered.")))
    {
        return false;
    }
    m_OnLevel();
    return true;
}
