#include "editor/app/CNewBitmapDialog.h"

#include "editor/core/LevelBitmap.h"
#include "editor/core/Words.h"

#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>
#include <QSpinBox>

namespace
{

constexpr QRgb USUAL_COLOR = 0xFF808080; // grey, opaque
constexpr int SWATCH = 16;               // pixels

} // namespace

CNewBitmapDialog::CNewBitmapDialog(QWidget* pParent, uint32_t uCellsX, uint32_t uCellsZ)
    : QDialog(pParent)
    , m_pColor(new QPushButton(this))
    , m_Color(QColor::fromRgba(USUAL_COLOR))
{
    setWindowTitle(Words("New terrain-type bitmap"));
    auto* pForm = new QFormLayout(this);
    m_pWidth = AddSide(*pForm, Words("Width (x)"), uCellsX);
    m_pHeight = AddSide(*pForm, Words("Height (z)"), uCellsZ);
    connect(m_pColor, &QPushButton::clicked, this, [this] { ChooseColor(); });
    pForm->addRow(Words("Colour"), m_pColor);
    ShowColor();
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(pButtons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    pForm->addRow(pButtons);
}

QSpinBox* CNewBitmapDialog::AddSide(QFormLayout& form, const char* pszLabel, uint32_t uSide)
{
    auto* pBox = new QSpinBox(this);
    pBox->setRange(1, static_cast<int>(LEVEL_BITMAP_SIDE));
    pBox->setSuffix(Words(" pixels"));
    pBox->setValue(static_cast<int>(uSide));
    form.addRow(pszLabel, pBox);
    return pBox;
}

void CNewBitmapDialog::ChooseColor()
{
    const QColor color =
        QColorDialog::getColor(m_Color,
                               this,
                               Words("Colour"),
                               QColorDialog::ShowAlphaChannel | QColorDialog::DontUseNativeDialog);
    if (color.isValid())
    {
        m_Color = color;
        ShowColor();
    }
}

void CNewBitmapDialog::ShowColor()
{
    QPixmap swatch(SWATCH, SWATCH);
    swatch.fill(m_Color);
    m_pColor->setIcon(swatch);
    m_pColor->setText(m_Color.name(QColor::HexArgb));
}

uint32_t CNewBitmapDialog::GetWidth() const
{
    return static_cast<uint32_t>(m_pWidth->value());
}

uint32_t CNewBitmapDialog::GetHeight() const
{
    return static_cast<uint32_t>(m_pHeight->value());
}

std::array<uint8_t, 4> CNewBitmapDialog::GetColor() const
{
    return {static_cast<uint8_t>(m_Color.red()),
            static_cast<uint8_t>(m_Color.green()),
            static_cast<uint8_t>(m_Color.blue()),
            static_cast<uint8_t>(m_Color.alpha())};
}
