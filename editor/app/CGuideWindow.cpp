#include "editor/app/CGuideWindow.h"

#include "editor/app/GuidePages.h"
#include "editor/core/Words.h"
#include "host/FileSystem.h"

#include <QAbstractTextDocumentLayout>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <algorithm>

namespace
{

constexpr char GUIDE_FOLDER[] = "docs/";
constexpr char GUIDE[] = "user-guide.md";
constexpr int WIDTH_CHARACTERS = 125;
constexpr int HEIGHT_LINES = 40;
constexpr int LIST_CHARACTERS = 34;
constexpr int DEEPEST_HEADING = 2; // in the list
constexpr int PICTURE_CHARACTERS = 80;

// A text whose pictures are no wider than a line.
class CGuideText : public QTextBrowser
{
public:
    using QTextBrowser::QTextBrowser;

protected:
    QVariant loadResource(int iType, const QUrl& name) override
    {
        QVariant found = QTextBrowser::loadResource(iType, name);
        if (iType != QTextDocument::ImageResource)
        {
            return found;
        }
        QImage picture = found.canConvert<QImage>() && !found.value<QImage>().isNull()
                             ? found.value<QImage>()
                             : QImage::fromData(found.toByteArray());
        const double fWidest = fontMetrics().averageCharWidth() * PICTURE_CHARACTERS;
        if (picture.width() > fWidest)
        {
            // As many of its pixels as the screen has for it.
            const double fPixels = std::min<double>(picture.width(), fWidest * devicePixelRatioF());
            picture = picture.scaledToWidth(static_cast<int>(fPixels), Qt::SmoothTransformation);
            picture.setDevicePixelRatio(fPixels / fWidest);
        }
        return picture;
    }
};

} // namespace

CGuideWindow::CGuideWindow(QWidget* pParent)
    : QDialog(pParent, Qt::Window)
    , m_pText(new CGuideText(this))
    , m_pHeadings(new QListWidget(this))
    , m_pSearch(new QLineEdit(this))
    , m_pFound(new QLabel(this))
{
    setObjectName("guide");
    setWindowTitle(Words("Guide"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_pText->setObjectName("guide-text");
    m_pText->setAccessibleName(Words("Text of the guide"));
    m_pText->setOpenLinks(false);
    m_pHeadings->setObjectName("guide-headings");
    m_pHeadings->setAccessibleName(Words("Headings"));
    m_pHeadings->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_pSearch->setObjectName("guide-search");
    m_pSearch->setAccessibleName(Words("Search in the guide"));
    m_pSearch->setPlaceholderText(Words("Search: Enter goes to the next place, Shift+Enter back"));
    m_pSearch->setClearButtonEnabled(true);
    m_pSearch->installEventFilter(this);
    m_pFound->setObjectName("guide-found");

    auto* pTop = new QHBoxLayout;
    pTop->addWidget(m_pSearch, 1);
    pTop->addWidget(m_pFound);
    auto* pParts = new QSplitter(this);
    pParts->addWidget(m_pHeadings);
    pParts->addWidget(m_pText);
    pParts->setStretchFactor(1, 1);
    const int iCharacter = fontMetrics().averageCharWidth();
    pParts->setSizes({iCharacter * LIST_CHARACTERS, iCharacter * WIDTH_CHARACTERS});
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addLayout(pTop);
    pLayout->addWidget(pParts, 1);
    resize(iCharacter * WIDTH_CHARACTERS, fontMetrics().height() * HEIGHT_LINES);

    connect(m_pText,
            &QTextBrowser::anchorClicked,
            this,
            [this](const QUrl& link) { FollowLink(link); });
    const auto go = [this]
    {
        if (const QListWidgetItem* pItem = m_pHeadings->currentItem())
        {
            ShowPage(pItem->data(Qt::UserRole).toString());
        }
    };
    connect(m_pHeadings, &QListWidget::currentRowChanged, this, go);
    connect(m_pHeadings, &QListWidget::itemClicked, this, go); // back to where it was
    connect(m_pSearch, &QLineEdit::textChanged, this, [this] { MarkFound(); });
    Load(GUIDE);
}

bool CGuideWindow::Load(const QString& strDocument)
{
    if (m_Document == strDocument)
    {
        return true;
    }
    const QString strFile =
        QString::fromStdString(fs::root_path((GUIDE_FOLDER + strDocument.toStdString()).c_str()));
    if (!QFileInfo::exists(strFile))
    {
        m_pFound->setText(strFile + Words(" is not there"));
        return false;
    }
    m_Document = strDocument;
    m_pText->setSource(QUrl::fromLocalFile(strFile), QTextDocument::MarkdownResource);
    m_Anchors.clear();
    m_Blocks.clear();
    m_pHeadings->clear();
    for (QTextBlock block = m_pText->document()->begin(); block.isValid(); block = block.next())
    {
        const int iLevel = block.blockFormat().headingLevel();
        if (iLevel == 0)
        {
            continue;
        }
        m_Anchors << MakeAnchor(block.text());
        m_Blocks << block.blockNumber();
        if (iLevel <= DEEPEST_HEADING)
        {
            auto* pItem = new QListWidgetItem(block.text(), m_pHeadings);
            pItem->setData(Qt::UserRole, m_Anchors.last());
        }
    }
    MarkFound();
    return true;
}

void CGuideWindow::ShowGuide(const QString& strAnchor)
{
    if (Load(GUIDE)) // a link may have led to another document
    {
        ShowPage(strAnchor);
    }
}

void CGuideWindow::ShowPage(const QString& strAnchor)
{
    const qsizetype iHeading = m_Anchors.indexOf(strAnchor);
    if (iHeading < 0)
    {
        return;
    }
    m_Page = strAnchor;
    const QTextBlock block = m_pText->document()->findBlockByNumber(m_Blocks[iHeading]);
    QTextCursor cursor(block);
    m_pText->setTextCursor(cursor);
    // To the upper edge, not only into the window.
    const QRectF at = m_pText->document()->documentLayout()->blockBoundingRect(block);
    m_pText->verticalScrollBar()->setValue(static_cast<int>(at.top()));
    const QSignalBlocker quiet(m_pHeadings);
    for (int i = 0; i < m_pHeadings->count(); ++i)
    {
        if (m_pHeadings->item(i)->data(Qt::UserRole) == strAnchor)
        {
            m_pHeadings->setCurrentRow(i);
        }
    }
}

void CGuideWindow::FocusSearch()
{
    m_pSearch->setFocus();
    m_pSearch->selectAll();
}

// Within the guide and the documents that come with it; nothing leads out of them.
void CGuideWindow::FollowLink(const QUrl& link)
{
    const QString strDocument = QFileInfo(link.path()).fileName();
    if (strDocument.isEmpty() || Load(strDocument))
    {
        ShowPage(link.fragment().isEmpty() && !m_Anchors.isEmpty() ? m_Anchors.first()
                                                                   : link.fragment());
    }
}

void CGuideWindow::MarkFound()
{
    QList<QTextEdit::ExtraSelection> marks;
    QTextCursor found(m_pText->document());
    while (!m_pSearch->text().isEmpty() && !found.isNull())
    {
        found = m_pText->document()->find(m_pSearch->text(), found);
        if (!found.isNull())
        {
            QTextEdit::ExtraSelection mark;
            mark.cursor = found;
            mark.format.setBackground(palette().highlight());
            mark.format.setForeground(palette().highlightedText());
            marks << mark;
        }
    }
    m_pText->setExtraSelections(marks);
    m_pFound->setText(m_pSearch->text().isEmpty() ? QString()
                      : marks.isEmpty()           ? QString(Words("not found"))
                                                  : QString(Words("%1 places")).arg(marks.size()));
}

void CGuideWindow::Find(bool bBack)
{
    const QTextDocument::FindFlags flags =
        bBack ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (m_pText->find(m_pSearch->text(), flags))
    {
        return;
    }
    // Round the end.
    m_pText->moveCursor(bBack ? QTextCursor::End : QTextCursor::Start);
    m_pText->find(m_pSearch->text(), flags);
}

bool CGuideWindow::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    const auto* pKey =
        pEvent->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(pEvent) : nullptr;
    if (pKey == nullptr || (pKey->key() != Qt::Key_Return && pKey->key() != Qt::Key_Enter))
    {
        return QDialog::eventFilter(pWatched, pEvent);
    }
    Find(pKey->modifiers().testFlag(Qt::ShiftModifier));
    return true;
}
