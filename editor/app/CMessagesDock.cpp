#include "editor/app/CMessagesDock.h"

#include "editor/core/Words.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDateTime>
#include <QHeaderView>
#include <QLineEdit>
#include <QLocale>
#include <QRegularExpression>
#include <QScrollBar>
#include <QShortcut>
#include <QStyle>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <cstdio>
#include <utility>

namespace
{

constexpr int LINES_KEPT = 5000;

enum EColumn
{
    COLUMN_KIND,
    COLUMN_TEXT,
};

struct SKind
{
    const char* pszName; // in its row
    QStyle::StandardPixmap ePicture;
};

constexpr SKind KINDS[] = { // by ELogKind
    {TextKey("Fault"), QStyle::SP_MessageBoxCritical},
    {TextKey("Warning"), QStyle::SP_MessageBoxWarning},
    {TextKey("Refusal"), QStyle::SP_MessageBoxInformation}};

constexpr int KIND_ROLE = Qt::UserRole; // an ELogKind

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
    : QDockWidget(Words("Messages"), pParent)
    , m_pKinds(new QComboBox(this))
    , m_pFilter(new QLineEdit(this))
    , m_pList(new QTreeWidget(this))
    , m_pBefore(SetLogSink(this))
{
    setObjectName("messages");
    m_pKinds->setObjectName("message-kinds");
    m_pKinds->setAccessibleName(Words("Kinds that are shown"));
    m_pKinds->addItems({Words("All messages"), Words("Faults and warnings"), Words("Faults")});
    m_pFilter->setObjectName("message-filter");
    m_pFilter->setAccessibleName(Words("Text that is shown"));
    m_pFilter->setPlaceholderText(Words("Filter"));
    m_pFilter->setClearButtonEnabled(true);
    auto* pCopy = new QToolButton(this);
    pCopy->setObjectName("message-copy");
    pCopy->setText(Words("Copy"));
    pCopy->setToolTip(Words("Copies the selected lines, or all that are shown (Ctrl+C)"));
    m_pList->setObjectName("message-list");
    m_pList->setAccessibleName(Words("Messages"));
    m_pList->setColumnCount(2);
    m_pList->setHeaderHidden(true);
    m_pList->header()->setSectionResizeMode(QHeaderView::ResizeToContents); // a long line scrolls
    m_pList->header()->setResizeContentsPrecision(0); // of what is seen, or each line costs all
    m_pList->setRootIsDecorated(false);
    m_pList->setUniformRowHeights(true);
    m_pList->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_pList->setTextElideMode(Qt::ElideNone);
    auto* pMiddle = new QWidget(this);
    auto* pRow = new QHBoxLayout;
    pRow->addWidget(m_pKinds);
    pRow->addWidget(m_pFilter, 1);
    pRow->addWidget(pCopy);
    auto* pColumn = new QVBoxLayout(pMiddle);
    pColumn->setContentsMargins(0, 0, 0, 0);
    pColumn->setSpacing(1);
    pColumn->addLayout(pRow);
    pColumn->addWidget(m_pList, 1);
    setWidget(pMiddle);
    m_CallTimer.setSingleShot(true);
    m_CallTimer.setInterval(0); // when the event loop turns
    m_CallTimer.callOnTimeout(this,
                              [this]
                              {
                                  if (m_OnFault && !m_strFault.isEmpty())
                                  {
                                      m_OnFault(m_strFault);
                                  }
                              });
    m_EndTimer.setSingleShot(true);
    m_EndTimer.callOnTimeout(m_pList, [this] { m_pList->scrollToBottom(); });
    connect(m_pKinds, &QComboBox::currentIndexChanged, this, [this] { Filter(); });
    connect(m_pFilter, &QLineEdit::textChanged, this, [this] { Filter(); });
    connect(pCopy, &QToolButton::clicked, this, [this] { Copy(); });
    new QShortcut(
        QKeySequence::Copy, m_pList, [this] { Copy(); }, Qt::WidgetShortcut);
}

CMessagesDock::~CMessagesDock()
{
    SetLogSink(m_pBefore);
}

void CMessagesDock::Write(const char* pszText)
{
    const ELogKind eKind = GetLogKind(); // the sink before may log
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
        const QStringList lines = m_strLine.left(iEnd).split('\n');
        m_strLine.remove(0, iEnd + 1);
        for (const QString& strLine : lines)
        {
            Add(GetShownLine(strLine), eKind);
        }
        NoteFault();
    }
}

void CMessagesDock::Add(const QString& strLine, ELogKind eKind)
{
    ++m_nLines;
    m_strLast = strLine;
    const SKind& kind = KINDS[static_cast<int>(eKind)];
    auto* pItem = new QTreeWidgetItem({Words(kind.pszName), strLine});
    pItem->setIcon(COLUMN_KIND, style()->standardIcon(kind.ePicture));
    pItem->setData(COLUMN_KIND, KIND_ROLE, static_cast<int>(eKind));
    pItem->setToolTip(COLUMN_TEXT,
                      QLocale().toString(QDateTime::currentDateTime(), "d MMM yyyy, HH:mm:ss"));
    // Who reads further up stays there.
    const QScrollBar* pBar = m_pList->verticalScrollBar();
    const bool bAtEnd = m_EndTimer.isActive() || pBar->value() == pBar->maximum();
    m_pList->addTopLevelItem(pItem);
    pItem->setHidden(!IsShown(*pItem));
    if (m_pList->topLevelItemCount() > LINES_KEPT)
    {
        delete m_pList->takeTopLevelItem(0);
    }
    if (bAtEnd && !m_EndTimer.isActive())
    {
        m_EndTimer.start(0); // once for all lines of a call
    }
}

// Refusals and warnings come the same way and are no faults.
void CMessagesDock::NoteFault()
{
    if (std::exchange(m_nCrashLogs, GetCrashLogCount()) == m_nCrashLogs)
    {
        return;
    }
    m_strFault = m_strLast;
    m_CallTimer.start();
}

QString CMessagesDock::TakeFaultOfCall()
{
    if (!m_CallTimer.isActive())
    {
        return {};
    }
    m_CallTimer.stop();
    return m_strFault;
}

bool CMessagesDock::IsShown(const QTreeWidgetItem& item) const
{
    constexpr int MOST[] = {// of the kinds, by the rows of the choice
                            static_cast<int>(ELogKind::Refusal),
                            static_cast<int>(ELogKind::Warning),
                            static_cast<int>(ELogKind::Fault)};
    return item.data(COLUMN_KIND, KIND_ROLE).toInt() <= MOST[m_pKinds->currentIndex()] &&
           item.text(COLUMN_TEXT).contains(m_pFilter->text(), Qt::CaseInsensitive);
}

void CMessagesDock::Filter()
{
    for (int i = 0; i < m_pList->topLevelItemCount(); ++i)
    {
        QTreeWidgetItem* pItem = m_pList->topLevelItem(i);
        pItem->setHidden(!IsShown(*pItem));
    }
}

void CMessagesDock::Copy() const
{
    const bool bSome = !m_pList->selectedItems().isEmpty();
    QString strText;
    for (int i = 0; i < m_pList->topLevelItemCount(); ++i)
    {
        const QTreeWidgetItem* pItem = m_pList->topLevelItem(i);
        if (!pItem->isHidden() && (!bSome || pItem->isSelected()))
        {
            strText += pItem->text(COLUMN_KIND) + ": " + pItem->text(COLUMN_TEXT) + '\n';
        }
    }
    QApplication::clipboard()->setText(strText);
}

QString CMessagesDock::GetText() const
{
    QStringList lines;
    for (int i = 0; i < m_pList->topLevelItemCount(); ++i)
    {
        lines << m_pList->topLevelItem(i)->text(COLUMN_TEXT);
    }
    return lines.join('\n');
}
