#include "editor/app/CBrushLibraryDock.h"

#include "editor/app/BrushPicture.h"
#include "editor/app/CBrushList.h"
#include "editor/app/ScreenRoom.h"
#include "editor/core/Words.h"
#include "framework/core/MessageBox.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace
{

QString GetText(const std::string& strText)
{
    return QString::fromStdString(strText);
}

} // namespace

CBrushLibraryDock::CBrushLibraryDock(QWidget* pParent,
                                     CEditorHost& host,
                                     IPlugin* pPlugin,
                                     std::function<void()> onTaken)
    : QDockWidget(Words("Brush library"), pParent)
    , m_Catalogue(host, pPlugin)
    , m_OnTaken(std::move(onTaken))
    , m_pFilter(new QLineEdit(this))
    , m_pList(new CBrushList(this,
                             {[this](int iRow, const QString& strName) { TakeName(iRow, strName); },
                              [this](int iFrom, int iTo)
                              {
                                  Move(iFrom, iTo);
                              }}))
    , m_pLine(new QLabel(this))
{
    setObjectName("library");
    m_pFilter->setObjectName("library-filter");
    m_pFilter->setPlaceholderText(Words("Filter"));
    m_pFilter->setAccessibleName(Words("Filter of the brushes, by name or function"));
    m_pFilter->setClearButtonEnabled(true);
    m_pList->setObjectName("library-list");
    m_pList->setAccessibleName(Words("Defined brushes"));
    m_pLine->setObjectName("library-line");
    m_pLine->setAccessibleName(Words("What was done to the brushes"));
    m_pLine->setWordWrap(true);
    m_pLine->setTextFormat(Qt::PlainText);
    auto* pMenu = new QMenu(this);
    AddActions(*pMenu);
    auto* pButton = new QToolButton(this);
    pButton->setObjectName("library-menu");
    pButton->setText(Words("Brush"));
    pButton->setAccessibleName(Words("What can be done to the brush"));
    pButton->setMenu(pMenu);
    pButton->setPopupMode(QToolButton::InstantPopup);
    pButton->setFocusPolicy(Qt::TabFocus);

    auto* pGround = new QWidget(this);
    auto* pTop = new QHBoxLayout;
    pTop->addWidget(m_pFilter, 1);
    pTop->addWidget(pButton);
    auto* pLayout = new QVBoxLayout(pGround);
    pLayout->addLayout(pTop);
    pLayout->addWidget(m_pList, 1);
    pLayout->addWidget(m_pLine);
    setWidget(pGround);
    setTabOrder(m_pFilter, pButton);
    setTabOrder(pButton, m_pList);

    m_NameTimer.setSingleShot(true);
    m_NameTimer.callOnTimeout(this, [this] { Finish(m_bNamed, m_iNamed); });
    connect(m_pList, &QListWidget::itemDoubleClicked, this, [this] { Take(); });
    connect(m_pFilter, &QLineEdit::textChanged, this, [this] { Filter(); });
    connect(m_pFilter, &QLineEdit::returnPressed, m_pList, [this] { TakeFocus(); });
    connect(this,
            &QDockWidget::visibilityChanged,
            this,
            [this](bool bVisible)
            {
                Follow();
                if (bVisible && !std::exchange(m_bWidened, true))
                {
                    m_WidthTimer.start(0); // when it has its place
                }
            });
    m_WidthTimer.setSingleShot(true);
    m_WidthTimer.callOnTimeout(
        this, [this] { WidenDock(*this, m_pList->GetFirstWidth() + width() - m_pList->width()); });
}

void CBrushLibraryDock::AddActions(QMenu& menu)
{
    const auto add =
        [&](const char* pszText, const QList<QKeySequence>& keys, const std::function<void()>& run)
    {
        QAction* pAction = menu.addAction(pszText);
        pAction->setShortcuts(keys);
        pAction->setShortcutContext(Qt::WidgetShortcut);
        connect(pAction, &QAction::triggered, this, run);
        m_pList->addAction(pAction);
    };
    const auto line = [&]
    {
        m_pList->addAction(menu.addSeparator());
    };
    add(Words("&Take"), {QKeySequence("Return"), QKeySequence("Enter")}, [this] { Take(); });
    line();
    add(Words("&Rename"), {QKeySequence("F2")}, [this] { Rename(); });
    add(Words("&Duplicate"), {QKeySequence("Ctrl+D")}, [this] { Duplicate(); });
    add(Words("Re&move"), {QKeySequence("Del")}, [this] { Remove(); });
    line();
    add(Words("&Earlier"),
        {QKeySequence("Alt+Up"), QKeySequence("Alt+Left")},
        [this] { Step(-1); });
    add(Words("&Later"),
        {QKeySequence("Alt+Down"), QKeySequence("Alt+Right")},
        [this] { Step(1); });
    line();
    add(Words("&Undo the last change"), {QKeySequence("Ctrl+Z")}, [this] { GoBack(false); });
    add(Words("Do it &again"),
        {QKeySequence("Ctrl+Shift+Z"), QKeySequence("Ctrl+Y")},
        [this] { GoBack(true); });
}

void CBrushLibraryDock::Follow()
{
    if (m_Catalogue.FollowHand())
    {
        m_pLine->clear();
        m_pList->clearSelection(); // it looks as if the brush were at hand
    }
    // Pictures are made of what is seen only.
    if (isHidden() || !m_Catalogue.Follow())
    {
        return;
    }
    const std::vector<SDefinedBrush>& brushes = m_Catalogue.GetBrushes();
    while (m_pList->count() > static_cast<int>(brushes.size()))
    {
        delete m_pList->takeItem(m_pList->count() - 1);
    }
    // Items stay where they are, so that selection and place do, too.
    for (size_t i = 0; i < brushes.size(); ++i)
    {
        SetRow(static_cast<int>(i), brushes[i]);
    }
    Filter();
}

void CBrushLibraryDock::SetRow(int iRow, const SDefinedBrush& brush)
{
    QListWidgetItem* pItem = m_pList->item(iRow);
    if (pItem == nullptr)
    {
        pItem = new QListWidgetItem(m_pList);
        pItem->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable |
                        Qt::ItemIsDragEnabled);
    }
    const QString strName = GetText(brush.strName);
    const QString strFunction =
        brush.strFunction.empty() ? QString(Words("no function")) : GetText(brush.strFunction);
    const QString strSize =
        QString(Words("%1, %2 units"))
            .arg(strFunction, QString::number(static_cast<double>(brush.fExtent), 'g', 6));
    const bool bImage = !brush.strImage.empty();
    const QString strImage = bImage ? GetText(brush.strImage) : QString(Words(NO_IMAGE));
    pItem->setText(strName);
    pItem->setData(CBrushList::FUNCTION_ROLE, strFunction);
    pItem->setData(CBrushList::FAULT_ROLE, bImage ? QString() : strImage);
    pItem->setData(Qt::AccessibleTextRole,
                   strName + ", " + strSize + (bImage ? QString() : ", " + strImage));
    // In marks of a rich text, so that no name is taken for one.
    pItem->setToolTip("<p style='white-space:pre'>" +
                      (strName + '\n' + strSize + '\n' + strImage).toHtmlEscaped() + "</p>");
    pItem->setIcon(MakeBrushPicture(bImage ? brush.pPixels : nullptr,
                                    static_cast<int>(brush.uSide),
                                    m_pList->iconSize(),
                                    *m_pList));
}

void CBrushLibraryDock::TakeFocus()
{
    show();
    raise();
    Follow();
    const int iRow = m_pList->currentRow();
    const int iShown = iRow < 0 || m_pList->isRowHidden(iRow) ? m_pList->FindShown(-1, 1) : iRow;
    if (iShown < 0)
    {
        m_pFilter->setFocus();
        return;
    }
    if (iShown != iRow || m_pList->selectedItems().isEmpty())
    {
        m_pList->Select(iShown);
    }
    m_pList->setFocus();
}

void CBrushLibraryDock::Filter()
{
    m_pList->Filter(m_pFilter->text());
}

void CBrushLibraryDock::Select(int iRow)
{
    const int iLast = m_pList->count() - 1;
    if (iRow >= 0 && iLast >= 0)
    {
        m_pList->Select(std::min(iRow, iLast));
    }
}

void CBrushLibraryDock::ShowLine(bool bDone)
{
    m_pLine->setText(GetText(m_Catalogue.GetLine()));
    if (!bDone && m_Catalogue.HasSaveFailed())
    {
        ShowMessageBox(Words("Failed to save brushes"),
                       MB_OK | MB_ICONEXCLAMATION); // as the panel says it
    }
}

void CBrushLibraryDock::Finish(bool bDone, int iRow)
{
    Follow();
    Select(iRow);
    ShowLine(bDone);
}

void CBrushLibraryDock::Take()
{
    const bool bTaken = m_Catalogue.Take(static_cast<size_t>(m_pList->currentRow()));
    ShowLine(bTaken);
    if (bTaken)
    {
        m_OnTaken();
    }
}

void CBrushLibraryDock::Rename()
{
    if (m_pList->currentItem() != nullptr)
    {
        m_pList->editItem(m_pList->currentItem());
    }
}

// What is typed counts at once; what is shown of it waits until the editor has gone.
void CBrushLibraryDock::TakeName(int iRow, const QString& strName)
{
    m_iNamed = iRow;
    m_bNamed = m_Catalogue.Rename(static_cast<size_t>(iRow), strName.toStdString());
    m_NameTimer.start(0);
}

void CBrushLibraryDock::Duplicate()
{
    const int iRow = m_pList->currentRow();
    const bool bDone = m_Catalogue.Duplicate(static_cast<size_t>(iRow));
    Finish(bDone, bDone ? iRow + 1 : iRow);
}

void CBrushLibraryDock::Remove()
{
    std::vector<size_t> brushes;
    int iFirst = m_pList->currentRow();
    for (const QListWidgetItem* pItem : m_pList->selectedItems())
    {
        brushes.push_back(static_cast<size_t>(m_pList->row(pItem)));
        iFirst = std::min(iFirst, m_pList->row(pItem));
    }
    const bool bDone = m_Catalogue.Remove(std::move(brushes));
    Finish(bDone, bDone ? iFirst : m_pList->currentRow());
}

void CBrushLibraryDock::Step(int iStep)
{
    const int iFrom = m_pList->currentRow();
    const int iTo = iFrom < 0 ? -1 : m_pList->FindShown(iFrom, iStep);
    if (iTo >= 0)
    {
        Move(iFrom, iTo);
    }
}

void CBrushLibraryDock::Move(int iFrom, int iTo)
{
    const bool bDone =
        m_Catalogue.Move(static_cast<size_t>(iFrom), static_cast<size_t>(std::max(iTo, 0)));
    Finish(bDone, bDone ? iTo : iFrom);
}

void CBrushLibraryDock::GoBack(bool bAgain)
{
    const std::vector<SDefinedBrush> before = m_Catalogue.GetBrushes();
    const bool bDone = bAgain ? m_Catalogue.DoAgain() : m_Catalogue.TakeBack();
    Follow();
    // Which brush it was shows where the list is another one first.
    const std::vector<SDefinedBrush>& now = m_Catalogue.GetBrushes();
    const auto isSame = [](const SDefinedBrush& one, const SDefinedBrush& other)
    {
        return one.strName == other.strName && one.strFunction == other.strFunction &&
               one.strImage == other.strImage && one.fExtent == other.fExtent;
    };
    const auto differ = std::mismatch(before.begin(), before.end(), now.begin(), now.end(), isSame);
    Finish(bDone, bDone ? static_cast<int>(differ.second - now.begin()) : m_pList->currentRow());
}
