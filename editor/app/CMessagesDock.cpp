#include "editor/app/CMessagesDock.h"

#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace
{

constexpr int LINES_KEPT = 5000;

// The line as a person reads it, without the "[Class::Method] " that it begins with.
QString GetShownLine(const QString& strLine)
{
    static const QRegularExpression s_Prefix("^\\[[A-Za-z_]\\w*(::\\w+)*\\] ");
    static const QRegularExpression s_PlainWord("^[a-z]+([ ,:;]|$)"); // and no name of a file
    const QRegularExpressionMatch prefix = s_Prefix.match(strLine);
    if (!prefix.hasMatch())
    {
        return strLine;
    }
    QString strText = strLine.mid(prefix.capturedLength());
    if (s_PlainWord.match(strText).hasMatch())
    {
        strText[0] = strText[0].toUpper();
    }
    return strText;
}

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
    // The log comes in pieces of lines, and what is shown are whole ones.
    m_strLine += QString::fromUtf8(pszText);
    const qsizetype iEnd = m_strLine.lastIndexOf('\n');
    if (iEnd >= 0)
    {
        QStringList lines = m_strLine.left(iEnd).split('\n');
        m_strLine.remove(0, iEnd + 1);
        m_nLines += static_cast<int>(lines.size());
        std::transform(lines.begin(), lines.end(), lines.begin(), &GetShownLine);
        m_strLast = lines.back();
        m_pText->appendPlainText(lines.join('\n'));
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
