#include "editor/app/CImportForm.h"

#include "editor/app/CImportSource.h"
#include "editor/app/CNumberBox.h"
#include "editor/core/Words.h"
#include "engine/elevation/ElevationFormats.h"
#include "engine/elevation/Resample.h"
#include "engine/terrain/SHeightField.h"
#include "host/TerrainSize.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>

#include <algorithm>
#include <utility>

namespace
{

constexpr int MOST_SAMPLES = 65535;
constexpr double NOWHERE = -91.0; // below the south pole: no latitude was given

} // namespace

CImportForm::CImportForm(QWidget* pParent,
                         const CImportSource& source,
                         bool bLevel,
                         std::function<void()> onChange,
                         std::function<void()> onShape)
    : QWidget(pParent)
    , m_OnChange(std::move(onChange))
    , m_OnShape(std::move(onShape))
{
    auto* pForm = new QFormLayout(this);
    pForm->setContentsMargins(0, 0, 0, 0);
    if (source.GetNotes())
    {
        auto* pNotes =
            new QLabel(Words("Filled in from ") + QString::fromStdString(source.GetNotesName()) +
                           Words(", which an export has left beside it."),
                       this);
        pNotes->setObjectName("import-notes");
        pNotes->setTextFormat(Qt::PlainText);
        pNotes->setWordWrap(true);
        pForm->addRow(pNotes);
    }
    AddOrientation(*pForm);
    if (source.IsRaw())
    {
        AddShape(*pForm);
    }
    AddSizes(*pForm, source);
    AddHeights(*pForm, source);
    AddTarget(*pForm, bLevel);
    setFocusProxy(m_pTurn);
    if (source.GetNotes())
    {
        FillIn(*source.GetNotes());
    }
}

void CImportForm::FillIn(const SExportNotes& notes)
{
    constexpr int DIGITS = 9;     // that a step of 16 bits needs
    constexpr double MOST = 1e12; // units: what an export had may be larger than what is typed
    m_pFlipZ->setChecked(notes.bSouthFirst);
    m_pUnit->setDecimals(DIGITS);
    m_pUnit->setValue(notes.dUnit);
    m_pBase->setDecimals(DIGITS);
    m_pBase->setValue(notes.dBase);
    for (QDoubleSpinBox* pBox : {m_pWidth, m_pDepth, m_pHighest})
    {
        pBox->setDecimals(DIGITS);
        pBox->setMaximum(MOST);
    }
    m_pWidth->setValue(notes.dWidth);
    m_pDepth->setValue(notes.dDepth);
    m_pHighest->setValue(notes.dHighest);
    m_pVertices->setCurrentIndex(0); // none is interpolated, where that can be
    if (m_pColumns != nullptr)
    {
        // The file is read in this shape already.
        const QSignalBlocker columns(m_pColumns);
        const QSignalBlocker rows(m_pRows);
        const QSignalBlocker order(m_pOrder);
        m_pColumns->setValue(static_cast<int>(notes.uColumns));
        m_pRows->setValue(static_cast<int>(notes.uRows));
        const int iOrder = m_pOrder->findData(static_cast<int>(notes.eByteOrder));
        m_pOrder->setCurrentIndex(std::max(iOrder, 0)); // somebody may have taken its line out
    }
}

void CImportForm::AddTarget(QFormLayout& form, bool bLevel)
{
    m_pTarget = new QComboBox(this);
    m_pTarget->setObjectName("import-target");
    m_pTarget->addItem(Words("a new level"), static_cast<int>(EImportAs::NewLevel));
    if (bLevel)
    {
        m_pTarget->addItem(Words("a step of this level"), static_cast<int>(EImportAs::ThisLevel));
    }
    form.addRow(Words("Becomes"), m_pTarget);
}

void CImportForm::AddOrientation(QFormLayout& form)
{
    m_pTurn = new QComboBox(this);
    m_pTurn->setObjectName("import-turn");
    m_pTurn->addItem(Words("as in the file"), static_cast<int>(ETurn::None));
    m_pTurn->addItem(Words("by 90 degrees to the right"), static_cast<int>(ETurn::Right));
    m_pTurn->addItem(Words("by 180 degrees"), static_cast<int>(ETurn::Half));
    m_pTurn->addItem(Words("by 90 degrees to the left"), static_cast<int>(ETurn::Left));
    connect(m_pTurn, &QComboBox::currentIndexChanged, this, [this] { m_OnChange(); });
    m_pFlipX = new QCheckBox(Words("&east and west"), this);
    m_pFlipX->setObjectName("import-flip-x");
    m_pFlipZ = new QCheckBox(Words("&north and south"), this);
    m_pFlipZ->setObjectName("import-flip-z");
    auto* pFlips = new QHBoxLayout;
    for (QCheckBox* pFlip : {m_pFlipX, m_pFlipZ})
    {
        connect(pFlip, &QCheckBox::toggled, this, [this] { m_OnChange(); });
        pFlips->addWidget(pFlip);
    }
    form.addRow(Words("&Turned"), m_pTurn);
    form.addRow(Words("Mirrored"), pFlips);
}

void CImportForm::AddSizes(QFormLayout& form, const CImportSource& source)
{
    m_pVertices = new QComboBox(this);
    m_pVertices->setObjectName("import-vertices");
    // A terrain may have other sides than those that are listed.
    const SSampleInfo& info = source.GetInfo();
    const uint32_t uOwn = info.uColumns;
    const bool bOwn =
        uOwn == info.uRows && IsTerrainSizeValid(uOwn, uOwn) && GetNearestSize(uOwn, uOwn) != uOwn;
    if (bOwn)
    {
        m_pVertices->addItem(QString(Words("%1 x %1, as in the file")).arg(uOwn), uOwn);
    }
    m_pVertices->addItem(Words("nearest to the file"), 0U);
    m_pVertices->setCurrentIndex(bOwn ? 1 : 0);
    // Each choice has twice as many cells a side as the one before.
    for (uint32_t uVertices = TERRAIN_LEAST_CHOICE; uVertices <= TERRAIN_MAX_VERTICES;
         uVertices = uVertices * 2 - 1)
    {
        m_pVertices->addItem(QString("%1 x %1").arg(uVertices), uVertices);
    }
    connect(m_pVertices, &QComboBox::currentIndexChanged, this, [this] { m_OnChange(); });
    form.addRow(Words("&Vertices"), m_pVertices);
    AddPair(
        form, Words("&Spacing x, z"), Words("auto"), "import-spacing", m_pSpacingX, m_pSpacingZ);
    AddPair(
        form, Words("Si&ze x, z"), Words("from the spacing"), "import-size", m_pWidth, m_pDepth);
    MakeRivals(m_pSpacingX, m_pWidth);
    MakeRivals(m_pSpacingZ, m_pDepth);
    if (info.bInDegrees && !info.geo.bKnown)
    {
        m_pLatitude = AddNumber(Words("not known"), "import-latitude");
        m_pLatitude->setRange(NOWHERE, 90.0);
        m_pLatitude->setValue(NOWHERE);
        m_pLatitude->setDecimals(4);
        form.addRow(Words("&Latitude"), m_pLatitude);
    }
}

void CImportForm::AddHeights(QFormLayout& form, const CImportSource& source)
{
    m_pUnit = AddNumber(Words("from the file"), "import-unit");
    m_pUnit->setDecimals(6);
    const SElevationFormat* pFormat = FindFormatOfFile(source.GetPath().c_str());
    if (pFormat != nullptr && pFormat->eCodes != ECodes::Never)
    {
        m_pWhite = AddNumber(Words("from the range"), "import-white");
        form.addRow(Words("Height of full &white"), m_pWhite);
        MakeRivals(m_pWhite, m_pUnit);
    }
    form.addRow(Words("Height of one &unit"), m_pUnit);
    m_pBase = AddNumber("", "import-base");
    m_pBase->setRange(-CNumberBox::LONGEST, CNumberBox::LONGEST);
    form.addRow(Words("Height of &0"), m_pBase);
    m_pHighest = AddNumber(Words("from the heights"), "import-highest");
    form.addRow(Words("&Maximum height"), m_pHighest);
}

void CImportForm::AddShape(QFormLayout& form)
{
    m_pColumns = AddCount(form, Words("&Columns"), "import-columns");
    m_pRows = AddCount(form, Words("&Rows"), "import-rows");
    m_pOrder = new QComboBox(this);
    m_pOrder->setObjectName("import-order");
    m_pOrder->addItem(Words("little"), static_cast<int>(EByteOrder::Little));
    m_pOrder->addItem(Words("big"), static_cast<int>(EByteOrder::Big));
    connect(m_pOrder, &QComboBox::currentIndexChanged, this, [this] { m_OnShape(); });
    form.addRow(Words("&Byte order"), m_pOrder);
}

void CImportForm::AddPair(QFormLayout& form,
                          const char* pszLabel,
                          const char* pszAuto,
                          const char* pszName,
                          QDoubleSpinBox*& pX,
                          QDoubleSpinBox*& pZ)
{
    pX = AddNumber(pszAuto, (std::string(pszName) + "-x").c_str());
    pZ = AddNumber(pszAuto, (std::string(pszName) + "-z").c_str());
    auto* pPair = new QWidget(this);
    auto* pLayout = new QHBoxLayout(pPair);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(pX);
    pLayout->addWidget(pZ);
    form.addRow(pszLabel, pPair);
    // The label's letter goes to the first of the two.
    if (auto* pLabel = qobject_cast<QLabel*>(form.labelForField(pPair)))
    {
        pLabel->setBuddy(pX);
    }
}

QDoubleSpinBox* CImportForm::AddNumber(const char* pszAuto, const char* pszName)
{
    auto* pBox = new CNumberBox(this);
    pBox->setObjectName(pszName);
    pBox->setDecimals(3);
    pBox->setRange(0.0, CNumberBox::LONGEST);
    pBox->setSpecialValueText(pszAuto);
    connect(pBox, &QDoubleSpinBox::valueChanged, this, [this] { m_OnChange(); });
    return pBox;
}

QSpinBox* CImportForm::AddCount(QFormLayout& form, const char* pszLabel, const char* pszName)
{
    auto* pBox = new QSpinBox(this);
    pBox->setObjectName(pszName);
    pBox->setRange(0, MOST_SAMPLES);
    pBox->setSpecialValueText(Words("square"));
    pBox->setKeyboardTracking(false); // the file is read again, and half a number is none
    connect(pBox, &QSpinBox::valueChanged, this, [this] { m_OnShape(); });
    form.addRow(pszLabel, pBox);
    return pBox;
}

void CImportForm::MakeRivals(QDoubleSpinBox* pFirst, QDoubleSpinBox* pSecond)
{
    const auto yield = [](QDoubleSpinBox* pTyped, QDoubleSpinBox* pOther)
    {
        connect(pTyped,
                &QDoubleSpinBox::valueChanged,
                pOther,
                [pOther](double dValue)
                {
                    if (dValue > 0.0)
                    {
                        pOther->setValue(0.0);
                    }
                });
    };
    yield(pFirst, pSecond);
    yield(pSecond, pFirst);
}

SImportOptions CImportForm::GetOptions() const
{
    SImportOptions options;
    options.eSpacing = ESpacing::Auto;
    options.orientation.eTurn = static_cast<ETurn>(m_pTurn->currentData().toInt());
    options.orientation.eFlip =
        static_cast<EFlip>((m_pFlipX->isChecked() ? static_cast<int>(EFlip::X) : 0) +
                           (m_pFlipZ->isChecked() ? static_cast<int>(EFlip::Z) : 0));
    options.uSize = m_pVertices->currentData().toUInt();
    options.fWidth = static_cast<float>(m_pWidth->value());
    options.fDepth = static_cast<float>(m_pDepth->value());
    // One of the two along each axis, also while the other is being put back.
    options.fSpacingX = options.fWidth > 0.0F ? 0.0F : static_cast<float>(m_pSpacingX->value());
    options.fSpacingZ = options.fDepth > 0.0F ? 0.0F : static_cast<float>(m_pSpacingZ->value());
    options.fMaxHeight = static_cast<float>(m_pHighest->value());
    options.dWhite = m_pWhite != nullptr ? m_pWhite->value() : 0.0;
    options.dUnit = options.dWhite > 0.0 ? 0.0 : m_pUnit->value();
    options.dBase = m_pBase->value();
    if (m_pLatitude != nullptr && m_pLatitude->value() > NOWHERE)
    {
        options.latitude = std::max(m_pLatitude->value(), -90.0);
    }
    if (m_pColumns != nullptr)
    {
        options.uColumns = static_cast<uint32_t>(m_pColumns->value());
        options.uRows = static_cast<uint32_t>(m_pRows->value());
        options.eByteOrder = static_cast<EByteOrder>(m_pOrder->currentData().toInt());
    }
    return options;
}

EImportAs CImportForm::GetTarget() const
{
    return static_cast<EImportAs>(m_pTarget->currentData().toInt());
}
