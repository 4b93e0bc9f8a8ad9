#pragma once

#include "framework/widgets/ControlNodes.h"

class QAbstractButton;

// A button of Qt, which is borrowed, as its window's node has it.
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
