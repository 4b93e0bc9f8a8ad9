#pragma once

#include "host/HostTypes.h"

#include <QDialog>

class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QPushButton;

// Asks for the measures of a new level; says what they may be, and where a height ends.
class CNewLevelDialog : public QDialog
{
public:
    explicit CNewLevelDialog(QWidget* pParent);

    uint32_t GetCells() const;
    SVec3 GetSize() const; // terrain units
    float GetHeight() const;

private:
    QDoubleSpinBox* AddLength(class QFormLayout& form, const char* pszLabel, double fValue);
    void Follow();

    QComboBox* m_pCells; // all the dialog's
    QDoubleSpinBox* m_pWidth;
    QDoubleSpinBox* m_pHighest;
    QDoubleSpinBox* m_pHeight;
    QLabel* m_pLimits;
    QPushButton* m_pMake = nullptr;
};
