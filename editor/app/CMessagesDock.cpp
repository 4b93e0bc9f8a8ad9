#include "editor/app/CMessagesDock.h"

#include <QPlainTextEdit>

#include <cstdio>
#include <utility>

namespace
{

constexpr int LINES_KEPT = 5000;

} // namespace

CMessagesDock::CMessagesDock(QWidget* pParent)
    : QDockWidget("Messages", pParent)
    , m_pText(new QPlainTextEdit(this))
    , m_pBefore(SetLogSink(this))
{
    setObjectName("messages");
    m_pText->setReadOnly(true);
    m_pText->setMaximumBlockCount(LINES_KEPT);
    m_pText->setLineWrapMode(QPlainTextEdit::NoWrap);
    setWidget(m_pText);
    m_CallTimer.setSingleShot(true);
    m_CallTimer.setInterval(0); // when the event loop turns
}

CMessagesDock::~CMessagesDock()
{
    SetLogSink(m_pBefore);
}

void CMessagesDock::Write(const char* pszText)
{
    if (m_pBefore != nullptr)
    {
        m_pBefore->Write(pszText);
    }
    else
    {
        std::fputs(pszText, stderr);
    }
    m_strLine += QString::fromUtf8(pszText);
    const qsizetype iEnd = m_strLine.lastIndexOf('\n');
    if (iEnd >= 0)
    {
        const QString strWhole = m_strLine.left(iEnd);
        m_strLine.remove(0, iEnd + 1);
        m_nLines += static_cast<int>(strWhole.count('\n')) + 1;
        m_strLast = strWhole.section('\n', -1);
        m_pText->appendPlainText(strWhole);
        TakeFault();
    }
}

// Refusals come the same way and are no faults.
void CMessagesDock::TakeFault()
{
    if (std::exchange(m_nCrashLogs, GetCrashLogCount()) == m_nCrashLogs)
    {
        return;
    }
    m_strFault = m_strLast;
    m_CallTimer.start();
}

QString CMessagesDock::GetText() const
{
    return m_pText->toPlainText();
}
