#include "editor/app/CSettingsDialog.h"

#include "editor/app/CNumberBox.h"
#include "editor/app/SEditorSettings.h"
#include "editor/core/CSettings.h"
#include "editor/core/Words.h"
#include "engine/reflection/EditFlags.h"
#include "host/Reflection.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace
{

constexpr int MOST_COUNT = 1000000;
constexpr double MOST_NUMBER = 1e9;
constexpr int NUMBER_DECIMALS = 4;
constexpr int WIDEST_LIMIT = 1000000; // so that the boxes are in line
constexpr const char* OWN_CATEGORY = TextKey("Editor");
constexpr const char* NO_CATEGORY = TextKey("Plug-in");

// What a setting of a type that this dialog edits is in memory; 0 for another one.
size_t GetSize(const SSetting& setting)
{
    switch (setting.uType)
    {
    case RTTI_INT:
        return sizeof(int32_t);
    case RTTI_BOOL:
        return sizeof(bool);
    case RTTI_FLOAT:
        return sizeof(float);
    default:
        return 0;
    }
}

// Plug-ins say what they like; flags that are wrong say nothing.
SEditFlags GetFlags(const SSetting& setting)
{
    SEditFlags flags;
    return ParseEditFlags(setting.strEditFlags, flags) ? flags : SEditFlags();
}

double GetLimit(const SEditFlags& flags, uint32_t uBit, double fLimit, double fOtherwise)
{
    return (flags.uEditFlags & uBit) != 0 ? fLimit : fOtherwise;
}

int ToCount(double fLimit)
{
    constexpr double MOST = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(fLimit, -MOST, MOST));
}

template <class TNumber> QString GetLimits(TNumber least, TNumber most)
{
    return QString(Words("%1 to %2")).arg(least).arg(most);
}

// A row with a number and, behind it, what it may be.
void AddRow(QFormLayout& form, const QString& strLabel, QWidget* pBox, const QString& strLimits)
{
    auto* pRow = new QHBoxLayout; // the form's
    auto* pLimits = new QLabel(strLimits, pBox->parentWidget());
    pLimits->setMinimumWidth(pLimits->fontMetrics().horizontalAdvance(GetLimits(0, WIDEST_LIMIT)));
    pBox->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    pRow->addWidget(pBox);
    pRow->addWidget(pLimits);
    form.addRow(strLabel, pRow);
}

} // namespace

CSettingsDialog::CSettingsDialog(QWidget* pParent,
                                 SEditorSettings& settings,
                                 const std::vector<SSetting>& registered,
                                 std::function<void()> resetPlugin)
    : QDialog(pParent)
    , m_Registered(registered)
    , m_ResetPlugin(std::move(resetPlugin))
    , m_pGroups(new QVBoxLayout(this))
{
    setWindowTitle(Words("Settings"));
    AddOwn(settings);
    for (const SSetting& setting : registered)
    {
        AddRegistered(setting);
    }
    auto* pButtons = new QDialogButtonBox(
        QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::RestoreDefaults, this);
    QPushButton* pDefaults = pButtons->button(QDialogButtonBox::RestoreDefaults);
    pDefaults->setText(Words("Restore defaults"));
    connect(pDefaults, &QPushButton::clicked, this, [this] { RestoreDefaults(); });
    connect(pButtons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_pGroups->addWidget(pButtons);
}

QFormLayout& CSettingsDialog::GetGroup(const std::string& strCategory)
{
    QFormLayout*& pForm = m_Forms[strCategory];
    if (pForm == nullptr)
    {
        auto* pGroup = new QGroupBox(QString::fromStdString(strCategory), this);
        pForm = new QFormLayout(pGroup);
        m_pGroups->addWidget(pGroup);
    }
    return *pForm;
}

void CSettingsDialog::AddOwn(SEditorSettings& settings)
{
    static const SEditorSettings s_Defaults;
    QFormLayout& form = GetGroup(Words(OWN_CATEGORY));
    AddCheck(form,
             Words("Strokes without gaps, however fast the mouse"),
             settings.input.bSampleStrokes,
             [] { return s_Defaults.input.bSampleStrokes; });
    AddInt(form,
           Words("Percent of the brush between points of a stroke (0: by its shape)"),
           0,
           SInputSettings::MOST_SPACING,
           settings.input.iSpacingPercent,
           [] { return s_Defaults.input.iSpacingPercent; });
    AddCheck(form,
             Words("Strokes aim at the ground as it was at the press"),
             settings.input.bAimAtPress,
             [] { return s_Defaults.input.bAimAtPress; });
    AddInt(form,
           Words("Times a second that a held stroke builds up (0: never)"),
           0,
           SInputSettings::MOST_BUILDS,
           settings.input.iBuildsASecond,
           [] { return s_Defaults.input.iBuildsASecond; });
    AddCheck(form,
             Words("Fly with the camera keys"),
             settings.bKeyboardNavigation,
             [] { return s_Defaults.bKeyboardNavigation; });
    AddCheck(form,
             Words("Smooth edges (where a graphics card draws)"),
             settings.bSmoothEdges,
             [] { return s_Defaults.bSmoothEdges; });
    AddInt(form,
           Words("Seconds between autosaves (0: never)"),
           0,
           SEditorSettings::MOST_SECONDS,
           settings.iAutosaveSeconds,
           [] { return s_Defaults.iAutosaveSeconds; });
    AddInt(form,
           Words("Megabytes for steps to undo (0: no limit)"),
           0,
           SEditorSettings::MOST_MEGABYTES,
           settings.iUndoMegabytes,
           [] { return s_Defaults.iUndoMegabytes; });
}

void CSettingsDialog::AddRegistered(const SSetting& setting)
{
    if (GetSize(setting) == 0)
    {
        return; // nothing that this dialog can edit
    }
    const SEditFlags flags = GetFlags(setting);
    const QString strLabel = QString::fromStdString(
        flags.strDescription.empty() ? setting.strName : flags.strDescription);
    QFormLayout& form =
        GetGroup(flags.strCategory.empty() ? Words(NO_CATEGORY) : flags.strCategory);
    if (setting.uType == RTTI_INT)
    {
        auto* pValue = static_cast<int32_t*>(setting.pValue);
        AddInt(form,
               strLabel,
               ToCount(GetLimit(flags, RTTI_EDIT_HAS_MIN, flags.fMin, 0)),
               ToCount(GetLimit(flags, RTTI_EDIT_HAS_MAX, flags.fMax, MOST_COUNT)),
               *pValue,
               [pValue] { return *pValue; });
    }
    else if (setting.uType == RTTI_BOOL)
    {
        auto* pValue = static_cast<bool*>(setting.pValue);
        AddCheck(form, strLabel, *pValue, [pValue] { return *pValue; });
    }
    else
    {
        AddNumber(form, strLabel, flags, *static_cast<float*>(setting.pValue));
    }
}

void CSettingsDialog::AddNumber(QFormLayout& form,
                                const QString& strLabel,
                                const SEditFlags& flags,
                                float& fValue)
{
    auto* pBox = new CNumberBox(this);
    pBox->setRange(GetLimit(flags, RTTI_EDIT_HAS_MIN, flags.fMin, -MOST_NUMBER),
                   GetLimit(flags, RTTI_EDIT_HAS_MAX, flags.fMax, MOST_NUMBER));
    pBox->setDecimals(NUMBER_DECIMALS);
    const auto show = [pBox, &fValue]
    {
        pBox->setValue(static_cast<double>(fValue));
    };
    show();
    AddRow(form, strLabel, pBox, GetLimits(pBox->minimum(), pBox->maximum()));
    m_Apply.emplace_back([pBox, &fValue] { fValue = static_cast<float>(pBox->value()); });
    m_ShowDefaults.emplace_back(show);
}

void CSettingsDialog::AddCheck(QFormLayout& form,
                               const QString& strLabel,
                               bool& bValue,
                               const std::function<bool()>& getDefault)
{
    auto* pBox = new QCheckBox(strLabel, this);
    pBox->setChecked(bValue);
    form.addRow(pBox);
    m_Apply.emplace_back([pBox, &bValue] { bValue = pBox->isChecked(); });
    m_ShowDefaults.emplace_back([pBox, getDefault] { pBox->setChecked(getDefault()); });
}

void CSettingsDialog::AddInt(QFormLayout& form,
                             const QString& strLabel,
                             int iLeast,
                             int iMost,
                             int32_t& iValue,
                             const std::function<int32_t()>& getDefault)
{
    auto* pBox = new QSpinBox(this);
    pBox->setRange(iLeast, iMost);
    pBox->setValue(iValue);
    AddRow(form, strLabel, pBox, GetLimits(iLeast, iMost));
    m_Apply.emplace_back([pBox, &iValue] { iValue = pBox->value(); });
    m_ShowDefaults.emplace_back([pBox, getDefault] { pBox->setValue(getDefault()); });
}

void CSettingsDialog::RestoreDefaults()
{
    // What the plug-in's defaults are shows only when it takes them; the values come back until the
    // dialog is left with OK.
    std::vector<std::string> kept;
    for (const SSetting& setting : m_Registered)
    {
        kept.emplace_back(static_cast<const char*>(setting.pValue), GetSize(setting));
    }
    m_ResetPlugin();
    for (const auto& show : m_ShowDefaults)
    {
        show();
    }
    for (size_t i = 0; i < kept.size(); ++i)
    {
        std::memcpy(m_Registered[i].pValue, kept[i].data(), kept[i].size());
    }
    m_bDefaults = true;
}

void CSettingsDialog::accept()
{
    if (m_bDefaults)
    {
        m_ResetPlugin(); // of those, too, that are not here
    }
    // Nothing has changed before this: each field has left a function that takes over its value.
    for (const auto& apply : m_Apply)
    {
        apply();
    }
    QDialog::accept();
}
