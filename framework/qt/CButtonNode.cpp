#include "framework/qt/CButtonNode.h"

#include "framework/qt/ControlWidgets.h"
#include "framework/widgets/CButton.h"

void CButtonNode::SetOwnerDraw()
{
    if (auto* pPainted = dynamic_cast<CPaintedButton*>(&m_Button))
    {
        pPainted->SetOwnerDraw();
    }
}

void CButtonNode::SetCheck(int iState)
{
    if (auto* pBox = qobject_cast<QCheckBox*>(&m_Button))
    {
        pBox->setCheckState(iState == CHECK_UNDETERMINED && pBox->isTristate()
                                ? Qt::PartiallyChecked
                                : (iState == CHECK_ON ? Qt::Checked : Qt::Unchecked));
    }
    else
    {
        m_Button.setChecked(iState == CHECK_ON);
    }
}

int CButtonNode::GetCheck() const
{
    const auto* pBox = qobject_cast<const QCheckBox*>(&m_Button);
    if (pBox != nullptr && pBox->checkState() == Qt::PartiallyChecked)
    {
        return CHECK_UNDETERMINED;
    }
    return m_Button.isChecked() ? CHECK_ON : CHECK_OFF;
}

void CButtonNode::Click()
{
    m_Button.click();
}

void CButtonNode::ReleasePress()
{
    m_Button.setDown(false);
}
