#include "editor/app/GroundPages.h"

#include "editor/app/CNumberBox.h"
#include "editor/core/Words.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QRadioButton>
#include <QSpinBox>
#include <QToolButton>

#include <algorithm>
#include <cmath>

namespace
{

constexpr int ANCHORS = 3;      // a side
constexpr int ANCHOR_SIDE = 28; // pixels
constexpr int TURN_RIGHT = 1;
constexpr int TURN_HALF = 2;
constexpr int TURN_LEFT = 3;

// Two buttons of which one is on; the first one at first. Gives the second.
QRadioButton* AddChoice(QFormLayout& form,
                        const char* pszLabel,
                        const char* pszFirst,
                        const char* pszSecond,
                        const char* pszSecondName)
{
    auto* pBox = new QWidget;
    auto* pColumn = new QVBoxLayout(pBox);
    pColumn->setContentsMargins(0, 0, 0, 0);
    auto* pFirst = new QRadioButton(pszFirst, pBox);
    auto* pSecond = new QRadioButton(pszSecond, pBox);
    pFirst->setChecked(true);
    pSecond->setObjectName(pszSecondName);
    pColumn->addWidget(pFirst);
    pColumn->addWidget(pSecond);
    form.addRow(pszLabel, pBox);
    return pSecond;
}

} // namespace

CSizePage::CSizePage(QWidget* pParent, const SGroundMeasures& before)
    : CGroundPage(pParent, before)
{
    auto* pForm = new QFormLayout(this);
    m_Lengths[0] = MakeLength(*pForm, Words("Width (x)"), "size-x", before.size.x);
    m_Lengths[2] = MakeLength(*pForm, Words("Depth (z)"), "size-z", before.size.z);
    m_Lengths[1] = MakeLength(*pForm, Words("Highest ground"), "size-y", before.size.y);
    m_pScale = AddChoice(*pForm,
                         Words("Heights"),
                         Words("are kept"),
                         Words("are scaled with the highest ground"),
                         "size-scale");
    connect(m_pScale, &QRadioButton::toggled, this, [this] { Tell(); });
    AddLimits(*pForm, Words("Each is more than 0, ") + CNumberBox::GetLimitText() + ".");
}

CSizePage::SLength
CSizePage::MakeLength(QFormLayout& form, const char* pszLabel, const char* pszName, float fSize)
{
    SLength length;
    length.pBox = AddLength(form, pszLabel, pszName);
    const double fLength = std::fabs(static_cast<double>(fSize));
    length.pBox->setMaximum(std::max(CNumberBox::LONGEST, fLength));
    length.pBox->setValue(fLength);
    length.fShown = length.pBox->value();
    return length;
}

float CSizePage::GetLength(const SLength& length, float fBefore)
{
    const double fValue = length.pBox->value();
    return fValue == length.fShown ? fBefore : std::copysign(static_cast<float>(fValue), fBefore);
}

bool CSizePage::GetAct(SGroundAct& act) const
{
    const SVec3& before = GetBefore().size;
    act = {.eKind = EGround::Size, .bScale = m_pScale->isChecked()};
    act.size = {GetLength(m_Lengths[0], before.x),
                GetLength(m_Lengths[1], before.y),
                GetLength(m_Lengths[2], before.z)};
    return act.size.x != before.x || act.size.y != before.y || act.size.z != before.z;
}

CEdgesPage::CEdgesPage(QWidget* pParent, const SGroundMeasures& before)
    : CGroundPage(pParent, before)
{
    auto* pForm = new QFormLayout(this);
    m_pCellsX = AddCells(*pForm, Words("More along x"), "edges-x");
    m_pCellsZ = AddCells(*pForm, Words("More along z"), "edges-z");
    pForm->addRow(Words("The present ground lies"), MakeAnchors());
    m_pAtZero = AddChoice(*pForm,
                          Words("New ground"),
                          Words("as high as the edge where it begins"),
                          Words("at 0"),
                          "edges-zero");
    connect(m_pAtZero, &QRadioButton::toggled, this, [this] { Tell(); });
    AddLimits(*pForm, Words("Below 0 crops. A level has 2 to 16385 vertices per side."));
}

QWidget* CEdgesPage::MakeAnchors()
{
    constexpr std::array<const char*, size_t{ANCHORS}* ANCHORS> TIPS = {TextKey("north-west"),
                                                                        TextKey("north"),
                                                                        TextKey("north-east"),
                                                                        TextKey("west"),
                                                                        TextKey("in the middle"),
                                                                        TextKey("east"),
                                                                        TextKey("south-west"),
                                                                        TextKey("south"),
                                                                        TextKey("south-east")};
    auto* pBox = new QWidget;
    auto* pGrid = new QGridLayout(pBox);
    pGrid->setContentsMargins(0, 0, 0, 0);
    pGrid->setSpacing(2);
    m_pAnchors = new QButtonGroup(this);
    for (int i = 0; i < ANCHORS * ANCHORS; ++i)
    {
        auto* pButton = new QToolButton(pBox);
        pButton->setObjectName(QString("edges-anchor-%1").arg(i));
        pButton->setCheckable(true);
        pButton->setFixedSize(ANCHOR_SIDE, ANCHOR_SIDE);
        pButton->setToolTip(Words(TIPS[static_cast<size_t>(i)]));
        pButton->setAccessibleName(Words(TIPS[static_cast<size_t>(i)]));
        pButton->setFocusPolicy(Qt::StrongFocus);
        m_pAnchors->addButton(pButton, i);
        pGrid->addWidget(pButton, i / ANCHORS, i % ANCHORS);
    }
    pGrid->setColumnStretch(ANCHORS, 1);
    m_pAnchors->button(ANCHORS * ANCHORS / 2)->setChecked(true);
    connect(m_pAnchors,
            &QButtonGroup::idToggled,
            this,
            [this](int iPlace, bool bOn)
            {
                m_pAnchors->button(iPlace)->setText(bOn ? QString(QChar(0x25CF)) : QString());
                Tell();
            });
    m_pAnchors->button(ANCHORS * ANCHORS / 2)->setText(QString(QChar(0x25CF)));
    return pBox;
}

bool CEdgesPage::GetAct(SGroundAct& act) const
{
    const int iColumn = m_pAnchors->checkedId() % ANCHORS;
    const int iRow = m_pAnchors->checkedId() / ANCHORS;
    const int nX = m_pCellsX->value();
    const int nZ = m_pCellsZ->value();
    act = {.eKind = EGround::Extend, .bAtZero = m_pAtZero->isChecked()};
    act.iWest = nX * iColumn / (ANCHORS - 1); // none, half or all of them
    act.iEast = nX - act.iWest;
    act.iNorth = nZ * iRow / (ANCHORS - 1);
    act.iSouth = nZ - act.iNorth;
    return nX != 0 || nZ != 0;
}

CMovePage::CMovePage(QWidget* pParent, const SGroundMeasures& before)
    : CGroundPage(pParent, before)
    , m_pWhat(new QComboBox(this))
{
    auto* pForm = new QFormLayout(this);
    m_pWhat->setObjectName("move-what");
    m_pWhat->addItem(Words("Shift"), static_cast<int>(EGround::Shift));
    m_pWhat->addItem(Words("Turn right"), static_cast<int>(EGround::Turn));
    m_pWhat->addItem(Words("Turn left"), static_cast<int>(EGround::Turn));
    m_pWhat->addItem(Words("Turn half round"), static_cast<int>(EGround::Turn));
    m_pWhat->addItem(Words("Mirror x: west becomes east"), static_cast<int>(EGround::MirrorX));
    m_pWhat->addItem(Words("Mirror z: north becomes south"), static_cast<int>(EGround::MirrorZ));
    pForm->addRow(Words("The ground"), m_pWhat);
    m_pCellsX = AddCells(*pForm, Words("To the east (x)"), "move-x");
    m_pCellsZ = AddCells(*pForm, Words("To the south (z)"), "move-z");
    m_pWrap = new QCheckBox(Words("What leaves the level comes in opposite"), this);
    m_pWrap->setObjectName("move-wrap");
    m_pWrap->setChecked(true);
    m_pWrap->setToolTip(Words("Off: the height of the edge goes on over the ground that is left."));
    pForm->addRow(m_pWrap);
    connect(m_pWhat, &QComboBox::currentIndexChanged, this, [this] { Follow(); });
    connect(m_pWrap, &QCheckBox::toggled, this, [this] { Tell(); });
    AddLimits(*pForm, Words("Below 0 goes west or north, up to 16384 cells."));
}

void CMovePage::Follow()
{
    const bool bShift = m_pWhat->currentIndex() == 0;
    m_pCellsX->setEnabled(bShift);
    m_pCellsZ->setEnabled(bShift);
    m_pWrap->setEnabled(bShift);
    Tell();
}

bool CMovePage::GetAct(SGroundAct& act) const
{
    static const std::array<int, 4> s_Turns = {0, TURN_RIGHT, TURN_LEFT, TURN_HALF};
    const auto nItem = static_cast<size_t>(m_pWhat->currentIndex());
    act = {.eKind = static_cast<EGround>(m_pWhat->currentData().toInt())};
    act.iCellsX = m_pCellsX->value();
    act.iCellsZ = m_pCellsZ->value();
    act.bWrap = m_pWrap->isChecked();
    act.iTurns = nItem < s_Turns.size() ? s_Turns[nItem] : 0;
    return act.eKind != EGround::Shift || act.iCellsX != 0 || act.iCellsZ != 0;
}

CRaisePage::CRaisePage(QWidget* pParent, const SGroundMeasures& before)
    : CGroundPage(pParent, before)
{
    auto* pForm = new QFormLayout(this);
    m_pBy = AddLength(*pForm, Words("All heights by"), "raise-by");
    m_pBy->setMinimum(-CNumberBox::LONGEST);
    m_pBy->setToolTip(Words("Below 0 lowers. Ground that cannot be edited stays."));
    AddLimits(*pForm, Words("Below 0 lowers, ") + CNumberBox::GetLimitText() + ".");
}

bool CRaisePage::GetAct(SGroundAct& act) const
{
    act = {.eKind = EGround::Raise, .fBy = static_cast<float>(m_pBy->value())};
    return act.fBy != 0.0F;
}
