#include "editor/app/CStatusLine.h"

#include "editor/app/CViewWidget.h"
#include "editor/app/ToolTexts.h"
#include "editor/core/CEditorHost.h"
#include "editor/core/Words.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPluginTools.h"

#include <QLabel>
#include <QLayout>

#include <algorithm>
#include <cmath>

namespace
{

constexpr int SAID_MS = 3000;
constexpr int WORDS_MARGIN = 6; // pixels beside the words

// As long as a line that stands for a while; it must be read without a gap.
constexpr char LONG_LINE[] =
    "Left drag pulls the ground up and down, right drag turns, wheel zooms, "
    "1 to 6 tools, F1 help";

constexpr double DEGREES = 57.29577951308232;

int GetNearest(float fPosition, float fSize, uint32_t uCells)
{
    const float fCell = fSize / static_cast<float>(uCells);
    return std::clamp(
        static_cast<int>(std::lround(fPosition / fCell)), 0, static_cast<int>(uCells));
}

// Of the two triangles' mean plane at a vertex.
double GetSlope(CTerrain& terrain, int iX, int iZ)
{
    const SVec3 normal = terrain.GetNormal(static_cast<uint32_t>(iX), static_cast<uint32_t>(iZ));
    return std::acos(std::clamp(static_cast<double>(normal.y), -1.0, 1.0)) * DEGREES;
}

QString GetPositionText(const SVec3& at)
{
    return QString(Words("x %1  z %2  height %3"))
        .arg(at.x, 0, 'f', 1)
        .arg(at.z, 0, 'f', 1)
        .arg(at.y, 0, 'f', 2);
}

QString GetVertexText(int iX, int iZ)
{
    return QString(Words("vertex %1, %2")).arg(iX).arg(iZ);
}

QString GetSlopeText(double fDegrees)
{
    return QString(Words("slope %1\u00b0")).arg(fDegrees, 0, 'f', 1);
}

QString GetFrameText(double fMilliseconds)
{
    return QString(Words("frame %1 ms")).arg(fMilliseconds, 0, 'f', 1);
}

// "Set height, brush 40.0", in terrain units, of what sculpts or paints.
QString GetBrushText(IPluginTools* pTools)
{
    const float fBrush = pTools != nullptr ? pTools->GetBrushExtent() : 0.0F;
    const std::string strName = pTools != nullptr ? pTools->GetToolName() : "";
    if (strName.empty() && !(fBrush > 0.0F))
    {
        return Words("no brush");
    }
    // An extent of 0 or below can be typed; the tool is at hand all the same.
    return QString::fromStdString(strName) + (strName.empty() ? "" : ", ") + Words("brush ") +
           GetExtentText(fBrush);
}

} // namespace

CStatusLine::CStatusLine(QWidget* pParent)
    : QStatusBar(pParent)
    , m_pMode(AddField("status-mode", "Export terrain extent"))
    , m_pBrush(AddField("status-brush", "Relative height, brush 888888.8"))
    , m_pRecord(AddField("status-record", Words("recording")))
    , m_pPosition(AddField("status-position", GetPositionText({888888.8F, 88888.88F, 888888.8F})))
    , m_pVertex(AddField("status-vertex", GetVertexText(88888, 88888)))
    , m_pSlope(AddField("status-slope", GetSlopeText(88.8)))
    , m_pFrame(AddField("status-frame", GetFrameText(888.8)))
    , m_pStroke(AddField("status-stroke", ""))
    , m_pWords(new QLabel(this))
{
    setMinimumWidth(1); // its fields make no window wider
    m_pRecord->setStyleSheet("color: #d03030; font-weight: bold;");
    m_pStroke->setMinimumWidth(1); // the last field: where there is no room it is cut
    m_pWords->setObjectName("status-words");
    m_pWords->setTextFormat(Qt::PlainText);
    m_pWords->setAutoFillBackground(true);
    m_pWords->setForegroundRole(QPalette::HighlightedText);
    m_pWords->setBackgroundRole(QPalette::Highlight);
    m_pWords->setMargin(0);
    m_pWords->setIndent(WORDS_MARGIN);
    m_pWords->hide();
    m_WordsTimer.setSingleShot(true);
    m_WordsTimer.setInterval(SAID_MS);
    m_WordsTimer.callOnTimeout(this, [this] { EndWords(); });
}

void CStatusLine::Say(const QString& strText)
{
    ShowWords(strText);
    m_WordsTimer.start();
}

void CStatusLine::ShowWords(const QString& strText)
{
    m_Words = strText;
    PlaceWords();
    m_pWords->show();
    m_pWords->raise();
}

// What stands comes back after what was said meanwhile.
void CStatusLine::EndWords()
{
    m_WordsTimer.stop();
    if (m_Standing.empty())
    {
        m_pWords->hide();
    }
    else
    {
        ShowWords(m_Standing.begin()->second);
    }
}

void CStatusLine::Stand(const std::string& strTopic, const QString& strText)
{
    m_Standing[strTopic] = strText;
    if (strText.isEmpty())
    {
        m_Standing.erase(strTopic);
    }
    if (!m_WordsTimer.isActive())
    {
        EndWords();
    }
}

void CStatusLine::Withdraw(const QString& strText)
{
    if (m_Words == strText)
    {
        EndWords();
    }
}

void CStatusLine::Replace(const QString& strText, const QString& strBy)
{
    if (m_Words == strText && m_WordsTimer.isActive())
    {
        ShowWords(strBy);
    }
}

int CStatusLine::GetNeededWidth() const
{
    int iWidth = 0;
    for (const QLabel* pField : {m_pMode, m_pBrush, m_pRecord})
    {
        iWidth += pField->minimumWidth() + layout()->spacing();
    }
    return iWidth;
}

void CStatusLine::ChooseRows()
{
    const QFontMetrics metrics = m_pWords->fontMetrics();
    // Only longer ones than that may cover the cursor's place for their time.
    const int iPlace = m_pPosition->minimumWidth() + layout()->spacing();
    const int iBeside = width() - GetNeededWidth() - iPlace - metrics.height();
    m_bTwoRows = iBeside < metrics.horizontalAdvance(LONG_LINE) + 2 * WORDS_MARGIN;
    setContentsMargins(0, 0, 0, m_bTwoRows ? metrics.height() + 2 : 0);
}

void CStatusLine::PlaceWords()
{
    const QFontMetrics metrics = m_pWords->fontMetrics();
    const int iRow = m_bTwoRows ? contentsMargins().bottom() : height() - 2;
    // The size grip is a square as high as a row.
    const int iEnd = isSizeGripEnabled() ? width() - iRow : width();
    const int iRoom = m_bTwoRows ? iEnd : iEnd - GetNeededWidth();
    const int iWanted = metrics.horizontalAdvance(m_Words) + 2 * WORDS_MARGIN;
    const int iWidth = std::min(iWanted, iRoom);
    m_pWords->setText(iWanted <= iRoom
                          ? m_Words
                          : metrics.elidedText(m_Words, Qt::ElideMiddle, iRoom - 2 * WORDS_MARGIN));
    m_pWords->setToolTip(iWanted <= iRoom ? QString() : m_Words);
    m_pWords->setGeometry(
        m_bTwoRows ? 0 : iEnd - iWidth, m_bTwoRows ? height() - iRow : 1, iWidth, iRow);
}

// Where not all fields have room, those go that are missed least.
void CStatusLine::FitFields()
{
    QLabel* const needed[] = {
        m_pRecord, m_pBrush, m_pPosition, m_pMode, m_pSlope, m_pVertex, m_pFrame};
    int iRoom = width() - (height() - contentsMargins().bottom());
    for (QLabel* pField : needed)
    {
        iRoom -= pField->minimumWidth() + layout()->spacing();
        pField->setVisible(iRoom >= 0);
    }
}

void CStatusLine::resizeEvent(QResizeEvent* pEvent)
{
    QStatusBar::resizeEvent(pEvent);
    ChooseRows();
    FitFields();
    PlaceWords();
}

QLabel* CStatusLine::AddField(const char* pszName, const QString& strWidest)
{
    auto* pLabel = new QLabel(this);
    pLabel->setObjectName(pszName);
    // As wide as its widest text, so that no field moves when a number grows.
    pLabel->setMinimumWidth(pLabel->fontMetrics().horizontalAdvance(strWidest));
    addWidget(pLabel);
    return pLabel;
}

void CStatusLine::Follow(CEditorHost& host, CViewWidget* pView, IPluginTools* pTools)
{
    const std::string& strCaption = host.GetCaption();
    const bool bMode = host.GetModes().GetCurrentModeId() != NO_MODE;
    m_pMode->setText(bMode ? QString::fromStdString(strCaption) : QString(Words("No mode")));
    m_pBrush->setText(GetBrushText(pTools));
    if (pView != nullptr)
    {
        m_pFrame->setText(GetFrameText(pView->GetFrameMilliseconds()));
    }
    SVec3 hit;
    CTerrain* pTerrain = host.GetEngine().GetCWorld().GetCTerrain();
    if (pTerrain == nullptr || pView == nullptr || !pView->GetInput().PickCursor(hit))
    {
        m_pPosition->clear();
        m_pVertex->clear();
        m_pSlope->clear();
        return;
    }
    const SVec3 size = pTerrain->GetSize();
    const int iX = GetNearest(hit.x, size.x, pTerrain->GetCellsPerSide());
    const int iZ = GetNearest(hit.z, size.z, pTerrain->GetCellsPerSideZ());
    m_pPosition->setText(GetPositionText(hit));
    m_pVertex->setText(GetVertexText(iX, iZ));
    m_pSlope->setText(GetSlopeText(GetSlope(*pTerrain, iX, iZ)));
}

void CStatusLine::ShowStroke(const QString& strText)
{
    m_pStroke->setText(strText);
}

void CStatusLine::SetRecording(bool bOn)
{
    m_pRecord->setText(bOn ? Words("recording") : "");
}
