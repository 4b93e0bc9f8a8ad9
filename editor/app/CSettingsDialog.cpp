#include "editor/app/CSettingsDialog.h"

#include "editor/app/CNumberBox.h"
#include "editor/app/SEditorSettings.h"
#include "editor/core/CSettings.h"
#include "host/Reflection.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QSpinBox>

namespace
{

constexpr int MOST_COUNT = 1000000;
constexpr double MOST_NUMBER = 1e9;

} // namespace

CSettingsDialog::CSettingsDialog(QWidget* pParent,
                                 SEditorSettings& settings,
                                 const std::vector<SSetting>& registered)
    : QDialog(pParent)
{
    setWindowTitle("Settings");
    auto* pForm = new QFormLayout(this);
    AddCheck(*pForm, "Strokes without gaps, however fast the mouse", settings.input.bSampleStrokes);
    AddInt(*pForm,
           "Percent of the brush between points of a stroke (0: by its shape)",
           0,
           SInputSettings::MOST_SPACING,
           settings.input.iSpacingPercent);
    AddCheck(
        *pForm, "Strokes aim at the ground as it was at the press", settings.input.bAimAtPress);
    AddCheck(*pForm, "Fly with the camera keys", settings.bKeyboardNavigation);
    AddInt(*pForm,
           "Seconds between autosaves (0: never)",
           0,
           SEditorSettings::MOST_SECONDS,
           settings.iAutosaveSeconds);
    AddInt(*pForm,
           "Megabytes for steps to undo (0: no limit)",
           0,
           SEditorSettings::MOST_MEGABYTES,
           settings.iUndoMegabytes);
    AddInt(*pForm,
           "Times a second that a held stroke builds up (0: never)",
           0,
           SInputSettings::MOST_BUILDS,
           settings.input.iBuildsASecond);
    for (const SSetting& setting : registered)
    {
        AddRegistered(*pForm, setting);
    }
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(pButtons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    pForm->addRow(pButtons);
}

void CSettingsDialog::AddRegistered(QFormLayout& form, const SSetting& setting)
{
    const QString strLabel = QString::fromStdString(setting.strName);
    switch (setting.uType)
    {
    case RTTI_INT:
        AddInt(form, strLabel, 0, MOST_COUNT, *static_cast<int32_t*>(setting.pValue));
        break;
    case RTTI_BOOL:
        AddCheck(form, setting.strName.c_str(), *static_cast<bool*>(setting.pValue));
        break;
    case RTTI_FLOAT:
    {
        auto* pBox = new CNumberBox(this);
        auto* pValue = static_cast<float*>(setting.pValue);
        pBox->setRange(-MOST_NUMBER, MOST_NUMBER);
        pBox->setDecimals(4);
        pBox->setValue(static_cast<double>(*pValue));
        form.addRow(strLabel, pBox);
        m_Apply.emplace_back([pBox, pValue] { *pValue = static_cast<float>(pBox->value()); });
        break;
    }
    default:
        break; // nothing that this dialog can edit
    }
}

void CSettingsDialog::AddCheck(QFormLayout& form, const char* pszLabel, bool& bValue)
{
    auto* pBox = new QCheckBox(pszLabel, this);
    pBox->setChecked(bValue);
    form.addRow(pBox);
    m_Apply.emplace_back([pBox, &bValue] { bValue = pBox->isChecked(); });
}

void CSettingsDialog::AddInt(
    QFormLayout& form, const QString& strLabel, int iLeast, int iMost, int32_t& iValue)
{
    auto* pBox = new QSpinBox(this);
    pBox->setRange(iLeast, iMost);
    pBox->setValue(iValue);
    form.addRow(strLabel, pBox);
    m_Apply.emplace_back([pBox, &iValue] { iValue = pBox->value(); });
}

void CSettingsDialog::accept()
{
    // Nothing has changed before this: each field has left a function that takes over its value.
    for (const auto& apply : m_Apply)
    {
        apply();
    }
    QDialog::accept();
}
