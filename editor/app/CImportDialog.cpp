#include "editor/app/CImportDialog.h"

#include "editor/app/CImportPicture.h"
#include "editor/app/CImportSource.h"
#include "editor/app/CNumberBox.h"
#include "editor/app/ImportWords.h"
#include "engine/elevation/ElevationFormats.h"
#include "engine/elevation/ImportPicture.h"
#include "host/TerrainSize.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace
{

constexpr int MOST_SAMPLES = 65535;
constexpr int ASSUMED_LINES = 5;  // seen at once
constexpr double NOWHERE = -91.0; // below the south pole: no latitude was given

// Colours a picture of the engine for Qt; a copy, since that of the engine goes.
QImage MakeImage(const SReliefPicture& picture, double fScale)
{
    QImage image = QImage(picture.rgb.data(),
                          static_cast<int>(picture.uWidth),
                          static_cast<int>(picture.uHeight),
                          static_cast<qsizetype>(picture.uWidth) * 3,
                          QImage::Format_RGB888)
                       .copy();
    image.setDevicePixelRatio(fScale);
    return image;
}

} // namespace

CImportDialog::CImportDialog(QWidget* pParent,
                             CImportSource& source,
                             bool bLevel,
                             std::function<QString()> lastFault)
    : QDialog(pParent)
    , m_Source(source)
    , m_LastFault(std::move(lastFault))
{
    setWindowTitle("Import " + QFileInfo(QString::fromStdString(source.GetPath())).fileName());
    auto* pSides = new QHBoxLayout;
    pSides->addWidget(MakeFileSide(), 1);
    pSides->addWidget(MakeLevelSide(bLevel));
    m_pFault = new QLabel(this);
    m_pFault->setObjectName("import-fault");
    m_pFault->setTextFormat(Qt::PlainText);
    m_pFault->setWordWrap(true);
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_pOk = pButtons->button(QDialogButtonBox::Ok);
    m_pOk->setText("&Import");
    connect(pButtons, &QDialogButtonBox::accepted, this, &CImportDialog::accept);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addLayout(pSides, 1);
    pLayout->addWidget(m_pFault);
    pLayout->addWidget(pButtons);
    Update();
}

QWidget* CImportDialog::MakeFileSide()
{
    auto* pSide = new QWidget(this);
    m_pPicture = new CImportPicture(pSide);
    m_pLook = new QComboBox(pSide);
    m_pLook->setObjectName("import-look");
    m_pLook->addItem("shaded", true);
    m_pLook->addItem("heights as grey", false);
    connect(m_pLook, &QComboBox::currentIndexChanged, this, [this] { Update(); });
    auto* pFile = new QGroupBox("The file", pSide);
    m_pFileWords = new QFormLayout(pFile);
    m_pFileWords->addRow("Picture", m_pLook);
    auto* pLayout = new QVBoxLayout(pSide);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pPicture, 1);
    pLayout->addWidget(pFile);
    return pSide;
}

QWidget* CImportDialog::MakeLevelSide(bool bLevel)
{
    auto* pSide = new QWidget(this);
    auto* pForm = new QFormLayout;
    AddOrientation(*pForm);
    if (m_Source.IsRaw())
    {
        AddShape(*pForm);
    }
    AddSizes(*pForm);
    AddHeights(*pForm);
    m_pTarget = new QComboBox(this);
    m_pTarget->setObjectName("import-target");
    m_pTarget->addItem("a new level", static_cast<int>(EImportAs::NewLevel));
    if (bLevel)
    {
        m_pTarget->addItem("a step of this level", static_cast<int>(EImportAs::ThisLevel));
    }
    pForm->addRow("Becomes", m_pTarget);
    auto* pResult = new QGroupBox("The level", pSide);
    m_pLevelWords = new QFormLayout(pResult);
    m_pAssumed = new QPlainTextEdit(pResult);
    m_pAssumed->setObjectName("import-assumed");
    m_pAssumed->setAccessibleName("What is assumed");
    m_pAssumed->setReadOnly(true);
    m_pAssumed->setTabChangesFocus(true);
    m_pAssumed->setMinimumHeight(ASSUMED_LINES * fontMetrics().lineSpacing());
    auto* pLayout = new QVBoxLayout(pSide);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addLayout(pForm);
    pLayout->addWidget(pResult);
    pLayout->addWidget(m_pAssumed, 1);
    return pSide;
}

void CImportDialog::AddOrientation(QFormLayout& form)
{
    m_pTurn = new QComboBox(this);
    m_pTurn->setObjectName("import-turn");
    m_pTurn->addItem("as in the file", static_cast<int>(ETurn::None));
    m_pTurn->addItem("by 90 degrees to the right", static_cast<int>(ETurn::Right));
    m_pTurn->addItem("by 180 degrees", static_cast<int>(ETurn::Half));
    m_pTurn->addItem("by 90 degrees to the left", static_cast<int>(ETurn::Left));
    connect(m_pTurn, &QComboBox::currentIndexChanged, this, [this] { Update(); });
    m_pFlipX = new QCheckBox("&east and west", this);
    m_pFlipX->setObjectName("import-flip-x");
    m_pFlipZ = new QCheckBox("&north and south", this);
    m_pFlipZ->setObjectName("import-flip-z");
    auto* pFlips = new QHBoxLayout;
    for (QCheckBox* pFlip : {m_pFlipX, m_pFlipZ})
    {
        connect(pFlip, &QCheckBox::toggled, this, [this] { Update(); });
        pFlips->addWidget(pFlip);
    }
    form.addRow("&Turned", m_pTurn);
    form.addRow("Mirrored", pFlips);
}

void CImportDialog::AddSizes(QFormLayout& form)
{
    m_pVertices = new QComboBox(this);
    m_pVertices->setObjectName("import-vertices");
    m_pVertices->addItem("nearest to the file", 0U);
    // Each choice has twice as many cells a side as the one before.
    for (uint32_t uVertices = TERRAIN_LEAST_CHOICE; uVertices <= TERRAIN_MAX_VERTICES;
         uVertices = uVertices * 2 - 1)
    {
        m_pVertices->addItem(QString("%1 x %1").arg(uVertices), uVertices);
    }
    connect(m_pVertices, &QComboBox::currentIndexChanged, this, [this] { Update(); });
    form.addRow("&Vertices", m_pVertices);
    AddPair(form, "&Spacing x, z", "auto", "import-spacing", m_pSpacingX, m_pSpacingZ);
    AddPair(form, "Si&ze x, z", "from the spacing", "import-size", m_pWidth, m_pDepth);
    MakeRivals(m_pSpacingX, m_pWidth);
    MakeRivals(m_pSpacingZ, m_pDepth);
    const SSampleInfo& info = m_Source.GetInfo();
    if (info.bInDegrees && !info.geo.bKnown)
    {
        m_pLatitude = AddNumber("not known", "import-latitude");
        m_pLatitude->setRange(NOWHERE, 90.0);
        m_pLatitude->setValue(NOWHERE);
        m_pLatitude->setDecimals(4);
        form.addRow("&Latitude", m_pLatitude);
    }
}

void CImportDialog::AddHeights(QFormLayout& form)
{
    m_pUnit = AddNumber("from the file", "import-unit");
    m_pUnit->setDecimals(6);
    const SElevationFormat* pFormat = FindFormatOfFile(m_Source.GetPath().c_str());
    if (pFormat != nullptr && pFormat->eCodes != ECodes::Never)
    {
        m_pWhite = AddNumber("from the range", "import-white");
        form.addRow("Height of full &white", m_pWhite);
        MakeRivals(m_pWhite, m_pUnit);
    }
    form.addRow("Height of one &unit", m_pUnit);
    m_pBase = AddNumber("", "import-base");
    m_pBase->setRange(-CNumberBox::LONGEST, CNumberBox::LONGEST);
    form.addRow("Height of &0", m_pBase);
    m_pHighest = AddNumber("from the heights", "import-highest");
    form.addRow("&Maximum height", m_pHighest);
}

void CImportDialog::AddShape(QFormLayout& form)
{
    m_pColumns = AddCount(form, "&Columns", "import-columns");
    m_pRows = AddCount(form, "&Rows", "import-rows");
    m_pOrder = new QComboBox(this);
    m_pOrder->setObjectName("import-order");
    m_pOrder->addItem("little", static_cast<int>(EByteOrder::Little));
    m_pOrder->addItem("big", static_cast<int>(EByteOrder::Big));
    connect(m_pOrder, &QComboBox::currentIndexChanged, this, [this] { ReadAgain(); });
    form.addRow("&Byte order", m_pOrder);
}

void CImportDialog::AddPair(QFormLayout& form,
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

QDoubleSpinBox* CImportDialog::AddNumber(const char* pszAuto, const char* pszName)
{
    auto* pBox = new CNumberBox(this);
    pBox->setObjectName(pszName);
    pBox->setDecimals(3);
    pBox->setRange(0.0, CNumberBox::LONGEST);
    pBox->setSpecialValueText(pszAuto);
    connect(pBox, &QDoubleSpinBox::valueChanged, this, [this] { Update(); });
    return pBox;
}

QSpinBox* CImportDialog::AddCount(QFormLayout& form, const char* pszLabel, const char* pszName)
{
    auto* pBox = new QSpinBox(this);
    pBox->setObjectName(pszName);
    pBox->setRange(0, MOST_SAMPLES);
    pBox->setSpecialValueText("square");
    pBox->setKeyboardTracking(false); // the file is read again, and half a number is none
    connect(pBox, &QSpinBox::valueChanged, this, [this] { ReadAgain(); });
    form.addRow(pszLabel, pBox);
    return pBox;
}

void CImportDialog::MakeRivals(QDoubleSpinBox* pFirst, QDoubleSpinBox* pSecond)
{
    const auto yield = [this](QDoubleSpinBox* pTyped, QDoubleSpinBox* pOther)
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

SImportOptions CImportDialog::GetOptions() const
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

EImportAs CImportDialog::GetTarget() const
{
    return static_cast<EImportAs>(m_pTarget->currentData().toInt());
}

void CImportDialog::accept()
{
    if (m_bPossible)
    {
        QDialog::accept();
    }
}

void CImportDialog::ReadAgain()
{
    m_Source.Read(GetOptions()); // a fault is shown in place of the picture
    Update();
}

void CImportDialog::Update()
{
    if (m_pOk == nullptr)
    {
        return; // still being made
    }
    SImportPlan plan;
    std::string strFault;
    if (!m_Source.IsRead())
    {
        ShowFault(m_LastFault());
    }
    else if (!PlanImport(m_Source.GetInfo(), m_Source.GetReport(), GetOptions(), plan, strFault))
    {
        ShowWords(DescribeFile(m_Source), *m_pFileWords);
        ShowFault(QString::fromStdString("It cannot be imported: " + strFault + "."));
    }
    else
    {
        ShowWords(DescribeFile(m_Source), *m_pFileWords);
        ShowPlan(plan);
        ShowFault({});
    }
}

void CImportDialog::ShowPlan(const SImportPlan& plan)
{
    const SOrientation orientation = GetOptions().orientation;
    ShowWords(DescribeLevel(m_Source, plan), *m_pLevelWords);
    m_pAssumed->setPlainText(ListAssumptions(m_Source, plan).join('\n'));
    const double fScale = devicePixelRatioF();
    const auto uPixels = static_cast<uint32_t>(m_pPicture->sizeHint().width() * fScale);
    SReliefPicture picture;
    const bool bDrawn = DrawImport(
        m_Source.GetThin(), orientation, plan, uPixels, m_pLook->currentData().toBool(), picture);
    m_pPicture->Show(bDrawn ? MakeImage(picture, fScale) : QImage(),
                     DescribeCorners(m_Source, orientation, plan));
}

void CImportDialog::ShowWords(const QList<SImportWord>& words, QFormLayout& form)
{
    for (const SImportWord& word : words)
    {
        const QString strName = QString("import-word-%1").arg(word.pszName);
        auto* pText = findChild<QLabel*>(strName);
        if (pText == nullptr)
        {
            pText = new QLabel(this);
            pText->setObjectName(strName);
            pText->setTextFormat(Qt::PlainText);
            pText->setTextInteractionFlags(Qt::TextSelectableByMouse);
            form.addRow(word.pszLabel, pText);
        }
        pText->setText(word.strText);
    }
}

void CImportDialog::ShowFault(const QString& strFault)
{
    m_bPossible = strFault.isEmpty();
    m_pOk->setEnabled(m_bPossible);
    m_pFault->setText(strFault);
    m_pFault->setVisible(!m_bPossible);
    if (!m_bPossible)
    {
        m_pPicture->Show({}, {});
        m_pAssumed->clear();
    }
}
