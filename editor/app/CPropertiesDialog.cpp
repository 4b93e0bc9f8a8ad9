#include "editor/app/CPropertiesDialog.h"

#include "editor/app/CStatisticsPage.h"
#include "editor/app/GroundPages.h"
#include "editor/core/CHostGround.h"
#include "editor/core/Words.h"
#include "engine/terrain/CTerrain.h"
#include "engine/terrain/SGroundMap.h"
#include "host/TerrainSize.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QStringList>
#include <QTabWidget>
#include <QVBoxLayout>

#include <bit>
#include <cmath>

namespace
{

QString GetLength(float fSize)
{
    return QString::number(std::fabs(static_cast<double>(fSize)), 'f', 2);
}

QString GetMeasuresText(const SGroundMeasures& after)
{
    return QString(
               Words("The level will have %1 x %2 vertices on %3 x %4 cm, %5 x %6 cm apart; its "
                     "highest ground is %7 cm."))
        .arg(after.uSizeX)
        .arg(after.uSizeZ)
        .arg(GetLength(after.size.x),
             GetLength(after.size.z),
             GetLength(after.size.x / static_cast<float>(after.uSizeX - 1)),
             GetLength(after.size.z / static_cast<float>(after.uSizeZ - 1)),
             GetLength(after.size.y));
}

// Those that the tool panel and the dialog of a new level offer.
bool IsOffered(const SGroundMeasures& measures)
{
    return measures.uSizeX == measures.uSizeZ && measures.uSizeX >= TERRAIN_LEAST_CHOICE &&
           std::has_single_bit(measures.uSizeX - 1);
}

} // namespace

CPropertiesDialog::CPropertiesDialog(QWidget* pParent, const CTerrain& terrain, bool bBitmap)
    : QDialog(pParent)
    , m_Terrain(terrain)
    , m_bBitmap(bBitmap)
    , m_pTabs(new QTabWidget(this))
    , m_pOutcome(new QLabel(this))
{
    setWindowTitle(Words("Level properties"));
    m_pTabs->setObjectName("properties-pages");
    const SGroundMeasures before = GetGroundMeasures(terrain);
    AddPage(new CSizePage(this, before), Words("&Size"));
    AddPage(new CEdgesPage(this, before), Words("&Grow or crop"));
    AddPage(new CMovePage(this, before), Words("&Move"));
    AddPage(new CRaisePage(this, before), Words("&Raise"));
    m_pTabs->addTab(new CStatisticsPage(this, terrain), Words("S&tatistics"));
    connect(m_pTabs, &QTabWidget::currentChanged, this, [this] { Follow(); });
    m_pOutcome->setObjectName("properties-outcome");
    m_pOutcome->setWordWrap(true);
    m_pOutcome->setMinimumHeight(m_pOutcome->fontMetrics().lineSpacing() * 4); // nothing moves
    m_pOutcome->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_pApply = pButtons->button(QDialogButtonBox::Ok);
    connect(pButtons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* pColumn = new QVBoxLayout(this);
    pColumn->addWidget(m_pTabs);
    pColumn->addWidget(m_pOutcome);
    pColumn->addWidget(pButtons);
    m_Pages.front()->Begin();
    Follow();
}

void CPropertiesDialog::AddPage(CGroundPage* pPage, const char* pszTitle)
{
    pPage->SetOnChange([this] { Follow(); });
    m_Pages.push_back(pPage);
    m_Titles.emplace_back(pszTitle);
    m_pTabs->addTab(pPage, pszTitle);
}

std::vector<SGroundAct> CPropertiesDialog::GetActs() const
{
    std::vector<SGroundAct> acts;
    for (const CGroundPage* pPage : m_Pages)
    {
        SGroundAct act;
        if (pPage->GetAct(act))
        {
            acts.push_back(act);
        }
    }
    return acts;
}

// Each act on the ground that those before it leave. nPage: whose it is.
const char* CPropertiesDialog::FindFault(size_t& nPage) const
{
    SGroundMeasures before = GetGroundMeasures(m_Terrain);
    for (nPage = 0; nPage < m_Pages.size(); ++nPage)
    {
        SGroundAct act;
        if (!m_Pages[nPage]->GetAct(act))
        {
            continue;
        }
        if (const char* pszFault = FindGroundFault(before, act))
        {
            return pszFault;
        }
        before = GetMeasuresAfter(before, act);
    }
    return nullptr;
}

void CPropertiesDialog::Follow()
{
    const auto nOpen = static_cast<size_t>(m_pTabs->currentIndex());
    bool bAny = false;
    for (size_t i = 0; i < m_Pages.size(); ++i)
    {
        SGroundAct act;
        const bool bAct = m_Pages[i]->GetAct(act);
        m_pTabs->setTabText(static_cast<int>(i), m_Titles[i] + (bAct ? " *" : ""));
        bAny = bAny || bAct;
    }
    size_t nPage = 0;
    const char* pszFault = FindFault(nPage);
    const bool bElsewhere = pszFault != nullptr && nPage != nOpen;
    const QString strPlace =
        bElsewhere ? QString(" (%1)").arg(QString(m_Titles[nPage]).remove('&')) : QString();
    m_pOutcome->setText(pszFault != nullptr
                            ? QString(Words("Not possible%1: %2.")).arg(strPlace, Words(pszFault))
                        : bAny                    ? GetOutcome()
                        : nOpen >= m_Pages.size() ? QString()
                                                  : QString(Words("Nothing changes.")));
    if (m_pApply != nullptr)
    {
        m_pApply->setEnabled(pszFault == nullptr);
    }
}

// Of acts without a fault.
QString CPropertiesDialog::GetOutcome() const
{
    const std::vector<SGroundAct> acts = GetActs();
    SGroundMeasures after = GetGroundMeasures(m_Terrain);
    QStringList names;
    bool bCuts = false;
    bool bExtends = false;
    bool bMoves = false;
    for (const SGroundAct& act : acts)
    {
        after = GetMeasuresAfter(after, act);
        names << QString::fromStdString(GetGroundText(act));
        bCuts = bCuts || !IsGroundMoved(act.eKind);
        bExtends = bExtends || act.eKind == EGround::Extend;
        bMoves = bMoves || IsGroundMoved(act.eKind);
    }
    QString strText =
        acts.size() > 1
            ? QString(Words("%1 steps: %2. ")).arg(acts.size()).arg(names.join(", ").toLower())
            : QString();
    strText += GetMeasuresText(after);
    // How many there are is known of the ground as it is now.
    const size_t nCut = acts.size() == 1 ? CountCutVertices(m_Terrain, acts[0]) : 0;
    if (nCut > 0)
    {
        strText += QString(Words(" %1 of %2 vertices end at 0 or at the highest ground."))
                       .arg(nCut)
                       .arg(size_t{m_Terrain.GetVerticesX()} * m_Terrain.GetVerticesZ());
    }
    else if (acts.size() > 1 && bCuts)
    {
        strText += Words(" No height goes below 0 or above the highest ground.");
    }
    if (bExtends && !IsOffered(after))
    {
        strText +=
            Words(" The tool panel has no such resolution: its own are square, of 33, 65, 129 and "
                  "so on.");
    }
    if (m_bBitmap && bMoves)
    {
        strText += Words(" The terrain-type bitmap follows as a new file.");
    }
    return strText;
}
