#pragma once

#include <QColor>
#include <QDialog>

#include <array>
#include <cstdint>

class QPushButton;
class QSpinBox;

// Asks for the size and the colour of a new terrain-type bitmap.
class CNewBitmapDialog : public QDialog
{
public:
    // uCellsX, uCellsZ: of the level; the bitmap begins with as many texels.
    CNewBitmapDialog(QWidget* pParent, uint32_t uCellsX, uint32_t uCellsZ);

    uint32_t GetWidth() const;
    uint32_t GetHeight() const;
    std::array<uint8_t, 4> GetColor() const; // red, green, blue, alpha

private:
    QSpinBox* AddSide(class QFormLayout& form, const char* pszLabel, uint32_t uSide);
    void ChooseColor();
    void ShowColor();

    QSpinBox* m_pWidth; // all the dialog's
    QSpinBox* m_pHeight;
    QPushButton* m_pColor;
    QColor m_Color;
};
