#pragma once

#include "editor/app/CGroundPage.h"

#include <array>

class CNumberBox;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QRadioButton;
class QSpinBox;

// The pages of the level's properties; all widgets are their own.

// How long, wide and high the level is.
class CSizePage : public CGroundPage
{
public:
    CSizePage(QWidget* pParent, const SGroundMeasures& before);

    bool GetAct(SGroundAct& act) const override;

private:
    struct SLength
    {
        CNumberBox* pBox = nullptr;
        double fShown = 0.0; // at first: what nobody has changed keeps its digits
    };

    SLength MakeLength(QFormLayout& form, const char* pszLabel, const char* pszName, float fSize);
    static float GetLength(const SLength& length, float fBefore);

    std::array<SLength, 3> m_Lengths; // x, y, z
    QRadioButton* m_pScale;
};

// Cells that come or go, and where the ground of before lies in the new one.
class CEdgesPage : public CGroundPage
{
public:
    CEdgesPage(QWidget* pParent, const SGroundMeasures& before);

    bool GetAct(SGroundAct& act) const override;

private:
    QWidget* MakeAnchors();

    QSpinBox* m_pCellsX;
    QSpinBox* m_pCellsZ;
    QButtonGroup* m_pAnchors = nullptr; // by rows, from the north-west
    QRadioButton* m_pAtZero;
};

// The ground shifted, turned or mirrored.
class CMovePage : public CGroundPage
{
public:
    CMovePage(QWidget* pParent, const SGroundMeasures& before);

    bool GetAct(SGroundAct& act) const override;

private:
    void Follow();

    QComboBox* m_pWhat;
    QSpinBox* m_pCellsX;
    QSpinBox* m_pCellsZ;
    QCheckBox* m_pWrap;
};

// All heights by one number.
class CRaisePage : public CGroundPage
{
public:
    CRaisePage(QWidget* pParent, const SGroundMeasures& before);

    bool GetAct(SGroundAct& act) const override;

private:
    CNumberBox* m_pBy;
};
