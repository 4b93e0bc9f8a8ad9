#include "framework/qt/ControlWidgets.h"

#include "framework/qt/CLineEdit.h"
#include "framework/qt/CReportView.h"
#include "framework/qt/CWindowNode.h"

#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>

namespace
{

void NotifyFrom(QWidget& widget, ENotify eKind)
{
    CWindowNode* pNode = CWindowNode::Find(&widget);
    if (pNode != nullptr)
    {
        pNode->Notify(eKind);
    }
}

// Tells of every press on an item, also on the one that is selected already.
class CChoiceList : public QListWidget, public IListNode
{
public:
    explicit CChoiceList(QWidget* pGround)
        : QListWidget(pGround)
    {
        setSelectionMode(SingleSelection);
        connect(this, &QListWidget::itemSelectionChanged, this, [this] { Tell(); });
    }

    int AddItem(const char* pszText) override
    {
        addItem(QString::fromUtf8(pszText));
        return count() - 1;
    }

    void RemoveItems() override
    {
        const QSignalBlocker quiet(this);
        clear();
    }

    int GetItemCount() const override { return count(); }

    std::string GetItemText(int iItem) const override
    {
        const QListWidgetItem* pItem = item(iItem);
        return pItem != nullptr ? pItem->text().toStdString() : std::string();
    }

    void SetItemNumber(int iItem, uintptr_t uData) override
    {
        if (QListWidgetItem* pItem = item(iItem))
        {
            pItem->setData(Qt::UserRole, qulonglong{uData});
        }
    }

    uintptr_t GetItemNumber(int iItem) const override
    {
        const QListWidgetItem* pItem = item(iItem);
        return pItem != nullptr ? pItem->data(Qt::UserRole).toULongLong() : 0;
    }

    void Select(int iItem) override
    {
        const QSignalBlocker quiet(this);
        clearSelection();
        setCurrentRow(iItem);
    }

    int GetSelected() const override
    {
        const QList<QListWidgetItem*> selected = selectedItems();
        return selected.isEmpty() ? -1 : row(selected.front());
    }

protected:
    void mousePressEvent(QMouseEvent* pEvent) override
    {
        // The base class tells of a selection that changes, and of nothing when the selected item
        // is pressed again.
        m_bTold = false;
        QListWidget::mousePressEvent(pEvent);
        const QListWidgetItem* pItem = itemAt(pEvent->position().toPoint());
        if (!m_bTold && pEvent->button() == Qt::LeftButton && pItem != nullptr &&
            pItem->isSelected())
        {
            Tell();
        }
    }

private:
    void Tell()
    {
        m_bTold = true;
        NotifyFrom(*this, ENotify::SelectionChanged);
    }

    bool m_bTold = false; // since the last press
};

QWidget* MakeButton(EControlKind eKind, const QString& strText, QWidget* pGround)
{
    QAbstractButton* pButton = nullptr;
    if (eKind == EControlKind::CheckBox)
    {
        pButton = new QCheckBox(strText, pGround);
    }
    else if (eKind == EControlKind::ThreeState)
    {
        auto* pBox = new CManualCheckBox(strText, pGround);
        pBox->setTristate();
        pButton = pBox;
    }
    else
    {
        auto* pPush = new CPaintedButton(strText, pGround);
        // Otherwise Enter would press the button under the focus instead of the template's default
        // button.
        pPush->setAutoDefault(false);
        pPush->setCheckable(eKind == EControlKind::PushCheck);
        if (eKind == EControlKind::OwnerDraw)
        {
            pPush->SetOwnerDraw();
        }
        pButton = pPush;
    }
    QObject::connect(pButton,
                     &QAbstractButton::clicked,
                     pButton,
                     [pButton] { NotifyFrom(*pButton, ENotify::Clicked); });
    QObject::connect(pButton,
                     &QAbstractButton::released,
                     pButton,
                     [pButton] { NotifyFrom(*pButton, ENotify::Released); });
    return pButton;
}

QWidget* MakeEdit(const QString& strText, uint32_t uStyle, QWidget* pGround)
{
    auto* pEdit = new CLineEdit(strText, pGround);
    pEdit->setReadOnly((uStyle & CONTROL_READ_ONLY) != 0);
    QObject::connect(pEdit,
                     &QLineEdit::textChanged,
                     pEdit,
                     [pEdit] { NotifyFrom(*pEdit, ENotify::TextChanged); });
    return pEdit;
}

QWidget* MakeWidget(EControlKind eKind, const QString& strText, uint32_t uStyle, QWidget* pGround)
{
    switch (eKind)
    {
    case EControlKind::Label:
    {
        return new QLabel(strText, pGround);
    }
    case EControlKind::Edit:
        return MakeEdit(strText, uStyle, pGround);
    case EControlKind::Slider:
        return new CSliderWidget(pGround);
    case EControlKind::Spin:
        return new CSpinWidget(pGround);
    case EControlKind::ListBox:
        return new CChoiceList(pGround);
    case EControlKind::DropDownList:
        return new CDropDown(pGround);
    case EControlKind::ListView:
        return new CReportView(pGround);
    case EControlKind::Space:
        return new CPaintedArea(pGround);
    default:
        return MakeButton(eKind, strText, pGround);
    }
}

} // namespace

QWidget* MakeControlWidget(const SControlResource& control, QWidget* pGround, CWindow* pParent)
{
    const QString strText = QString::fromUtf8(control.pszText);
    QWidget* pWidget = MakeWidget(control.eKind, strText, control.uStyle, pGround);
    CWindowNode* pNode = CWindowNode::Make(*pWidget, control.eKind, control.uId, pParent);
    pNode->SetStyle(control.uStyle);
    // A name by which an inspector or a test finds the control.
    pWidget->setObjectName(QString::number(control.uId));
    // What scrolls gets the events of the mouse at its viewport.
    if (auto* pArea = dynamic_cast<QAbstractScrollArea*>(pWidget))
    {
        pNode->Watch(*pArea->viewport());
    }
    if ((control.uStyle & CONTROL_NO_TAB) != 0)
    {
        pWidget->setFocusPolicy(Qt::ClickFocus);
    }
    if (auto* pButton = qobject_cast<QPushButton*>(pWidget))
    {
        pButton->setDefault((control.uStyle & CONTROL_DEFAULT) != 0);
    }
    return pWidget;
}

CDropDown::CDropDown(QWidget* pGround)
    : QComboBox(pGround)
{
    setFocusPolicy(Qt::StrongFocus); // not by the wheel
    connect(this, &QComboBox::activated, this, &CDropDown::OnActivated);
}

int CDropDown::AddItem(const char* pszText)
{
    const int iShown = currentIndex();
    addItem(QString::fromUtf8(pszText));
    Select(iShown); // the first item does not become the selected one by itself
    return count() - 1;
}

void CDropDown::RemoveItems()
{
    clear();
    Select(-1);
}

std::string CDropDown::GetItemText(int iItem) const
{
    return itemText(iItem).toStdString();
}

int CDropDown::FindItem(const char* pszText) const
{
    return findText(QString::fromUtf8(pszText), Qt::MatchExactly | Qt::MatchCaseSensitive);
}

void CDropDown::SetItemNumber(int iItem, uintptr_t uData)
{
    setItemData(iItem, qulonglong{uData});
}

uintptr_t CDropDown::GetItemNumber(int iItem) const
{
    return itemData(iItem).toULongLong();
}

void CDropDown::ShowList(bool bShow)
{
    bShow ? showPopup() : hidePopup();
}

void CDropDown::Select(int iItem)
{
    setCurrentIndex(iItem);
    m_Last = currentIndex();
}

void CDropDown::OnActivated(int iItem)
{
    if (iItem != m_Last)
    {
        m_Last = iItem;
        NotifyFrom(*this, ENotify::SelectionChanged);
    }
}
