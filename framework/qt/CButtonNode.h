#pragma once

#include "framework/widgets/ControlNodes.h"

class QAbstractButton;

// What a button's object asks of it. Part of its window's node, and borrows the widget, which lives
// as long as that.
class CButtonNode final : public IButtonNode
{
public:
    explicit CButtonNode(QAbstractButton& button)
        : m_Button(button)
    {
    }

    void SetOwnerDraw() override;
    void SetCheck(int iState) override;
    int GetCheck() const override;
    void Click() override;
    void ReleasePress() override;

private:
    QAbstractButton& m_Button;
};
