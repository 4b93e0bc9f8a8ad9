#include "framework/qt/ControlWidgets.h"

#include "framework/qt/CReportView.h"
#include "framework/qt/CWindowNode.h"
#include "framework/widgets/CButton.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
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
class CChoiceList : public QListWidget
{
public:
    explicit CChoiceList(QWidget* pGround)
        : QListWidget(pGround)
    {
        setSelectionMode(SingleSelection);
        connect(this, &QListWidget::itemSelectionChanged, this, [this] { Tell(); });
    }

protected:
    void mousePressEvent(QMouseEvent* pEvent) override
    {
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
    return pButton;
}

QWidget* MakeEdit(const QString& strText, uint32_t uStyle, QWidget* pGround)
{
    auto* pEdit = new QLineEdit(strText, pGround);
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

QWidget* MakeControlWidget(EControlKind eKind,
                           const char* pszText,
                           uint32_t uStyle,
                           QWidget* pGround,
                           uint32_t uId,
                           CWindow* pParent)
{
    QWidget* pWidget = MakeWidget(eKind, QString::fromUtf8(pszText), uStyle, pGround);
    CWindowNode* pNode = CWindowNode::Make(*pWidget, eKind, uId, pParent);
    pNode->SetStyle(uStyle);
    // A name by which an inspector or a test finds the control.
    pWidget->setObjectName(QString::number(uId));
    if (auto* pArea = dynamic_cast<QAbstractScrollArea*>(pWidget))
    {
        pNode->Watch(*pArea->viewport());
    }
    if ((uStyle & CONTROL_NO_TAB) != 0)
    {
        pWidget->setFocusPolicy(Qt::ClickFocus);
    }
    if (auto* pButton = qobject_cast<QPushButton*>(pWidget))
    {
        pButton->setDefault((uStyle & CONTROL_DEFAULT) != 0);
    }
    return pWidget;
}

void SetWidgetText(QWidget& widget, const char* pszText)
{
    const QString strText = QString::fromUtf8(pszText);
    if (auto* pLabel = qobject_cast<QLabel*>(&widget))
    {
        pLabel->setText(strText);
    }
    else if (auto* pButton = qobject_cast<QAbstractButton*>(&widget))
    {
        pButton->setText(strText);
    }
    else if (auto* pEdit = qobject_cast<QLineEdit*>(&widget))
    {
        pEdit->setText(strText);
    }
    else
    {
        widget.setWindowTitle(strText);
    }
}

std::string GetWidgetText(const QWidget& widget)
{
    if (const auto* pLabel = qobject_cast<const QLabel*>(&widget))
    {
        return pLabel->text().toStdString();
    }
    if (const auto* pButton = qobject_cast<const QAbstractButton*>(&widget))
    {
        return pButton->text().toStdString();
    }
    if (const auto* pEdit = qobject_cast<const QLineEdit*>(&widget))
    {
        return pEdit->text().toStdString();
    }
    if (const auto* pCombo = qobject_cast<const QComboBox*>(&widget))
    {
        return pCombo->currentText().toStdString();
    }
    return widget.windowTitle().toStdString();
}

void SetButtonCheck(CWindowNode& node, int iState)
{
    if (auto* pBox = node.GetAs<QCheckBox>())
    {
        pBox->setCheckState(iState == CHECK_UNDETERMINED && pBox->isTristate()
                                ? Qt::PartiallyChecked
                                : (iState == CHECK_ON ? Qt::Checked : Qt::Unchecked));
    }
    else if (auto* pButton = node.GetAs<QAbstractButton>())
    {
        pButton->setChecked(iState == CHECK_ON);
    }
}

int GetButtonCheck(const CWindowNode& node)
{
    const auto* pBox = node.GetAs<QCheckBox>();
    if (pBox != nullptr && pBox->checkState() == Qt::PartiallyChecked)
    {
        return CHECK_UNDETERMINED;
    }
    const auto* pButton = node.GetAs<QAbstractButton>();
    return pButton != nullptr && pButton->isChecked() ? CHECK_ON : CHECK_OFF;
}

CDropDown::CDropDown(QWidget* pGround)
    : QComboBox(pGround)
{
    setFocusPolicy(Qt::StrongFocus); // not by the wheel
    connect(this, &QComboBox::activated, this, &CDropDown::OnActivated);
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
