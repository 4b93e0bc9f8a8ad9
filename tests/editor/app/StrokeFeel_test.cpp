// What a stroke by the mouse leaves: even crests, straight rows, dabs, and a mark that stays under
// the cursor.

#include "editor/core/IHostObserver.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPluginStrokes.h"
#include "host/IPluginTools.h"
#include "tests/editor/app/EditorFixture.h"

#include <QCursor>
#include <QImage>
#include <QLabel>
#include <QPixmap>
#include <QScreen>

#include <algorithm>
#include <cmath>

namespace
{

// The points that the plug-in was given, until it goes.
class CPointList : public IHostObserver
{
public:
    explicit CPointList(CEditorHost& host)
        : m_Host(host)
    {
        m_Host.GetObservers().Add(this);
    }

    ~CPointList() override { m_Host.GetObservers().Remove(this); }

    CPointList(const CPointList&) = delete;
    CPointList& operator=(const CPointList&) = delete;

    void OnEvent(const SHostEvent& event) override
    {
        if (event.eKind == EHostEvent::MouseMove && event.bHit && m_Host.GetInput().IsDragging())
        {
            points.push_back(event.hit);
        }
    }

    std::vector<SVec3> points;

private:
    CEditorHost& m_Host;
};

constexpr size_t SIDE = 257;

double GetDistance(const SVec3& a, const SVec3& b)
{
    return std::hypot(static_cast<double>(a.x) - b.x, static_cast<double>(a.z) - b.z);
}

// The largest distance of a point from the straight line through the first and the last one.
double GetBend(const std::vector<SVec3>& points)
{
    const SVec3& first = points.front();
    const SVec3& last = points.back();
    double fMost = 0.0;
    for (const SVec3& point : points)
    {
        const double fCross =
            (static_cast<double>(last.x) - first.x) * (static_cast<double>(point.z) - first.z) -
            (static_cast<double>(last.z) - first.z) * (static_cast<double>(point.x) - first.x);
        fMost = std::max(fMost, std::fabs(fCross) / GetDistance(first, last));
    }
    return fMost;
}

class CStrokeFeel : public CEditorFixture
{
protected:
    // 320 x 320 units, 256 x 256 cells unless another number is given, 100 high, flat at 20.
    void StartFine(uint32_t uSide = SIDE)
    {
        ASSERT_NO_FATAL_FAILURE(Start());
        SHeightField field;
        field.Allocate(uSide, uSide);
        field.size = {320.0F, 100.0F, 320.0F};
        std::fill_n(field.pHeights.get(), field.GetCount(), 20.0F);
        GetHost().TakeLevel(std::move(field));
        Settle();
    }

    SInputSettings& GetInput() { return m_Window->GetSettings().input; }

    // How far the crest of a straight stroke dips with a shape, as a share of its height.
    double GetDip(const char* pszShape)
    {
        TakeBrush("RelativeHeightFunction", "m_Height", "50", "extent( 80.0 )", pszShape);
        const std::vector<float> before = GetHeights();
        Drag(GetView(1), {0.2, 0.5}, {0.8, 0.5}, 3);
        const std::vector<float> heights = GetHeights();
        double fLow = 1e9;
        double fHigh = 0.0;
        for (size_t x = 112; x < 145; ++x) // the ends left out
        {
            double fCrest = 0.0;
            for (size_t i = x; i < heights.size(); i += SIDE)
            {
                fCrest = std::max(fCrest, static_cast<double>(heights[i] - before[i]));
            }
            fLow = std::min(fLow, fCrest);
            fHigh = std::max(fHigh, fCrest);
        }
        Key("ctrl+z");
        EXPECT_GT(fHigh, 40.0) << pszShape;
        return 1.0 - fLow / fHigh;
    }

    // Presses at once, drags and lets go; the points that the plug-in was given.
    std::vector<SVec3> DragPoints(CViewWidget& view, const QPointF& from, const QPointF& to)
    {
        CPointList list(GetHost());
        Drag(view, from, to);
        return list.points;
    }

    // From the end of the last stroke to there; the points that the plug-in was given.
    std::vector<SVec3> JoinTo(const QPointF& share)
    {
        MoveTo(GetView(1), share);
        Do({"keydown", "space"});
        CPointList list(GetHost());
        Do({"click", "1"});
        Do({"keyup", "space"});
        return list.points;
    }

    // Where the picture of a view is tinted as under a brush, device pixels; nothing: (-1, -1).
    QPointF FindTint(CViewWidget& view)
    {
        Settle();
        const QPoint corner =
            view.mapToGlobal(QPoint(0, 0)); // what the screen has, not a new frame
        const QImage picture =
            view.screen()
                ->grabWindow(0, corner.x(), corner.y(), view.width(), view.height())
                .toImage();
        double fX = 0.0;
        double fY = 0.0;
        int nFound = 0;
        for (int y = 0; y < picture.height(); ++y)
        {
            for (int x = 0; x < picture.width(); ++x)
            {
                const QColor color = picture.pixelColor(x, y);
                if (color.green() > color.red() + 60)
                {
                    fX += x;
                    fY += y;
                    ++nFound;
                }
            }
        }
        return nFound > 20 ? QPointF(fX / nFound, fY / nFound) : QPointF(-1.0, -1.0);
    }
};

} // namespace

TEST_F(CStrokeFeel, CrestsAreEvenAndTheSettingSaysOtherwise)
{
    ASSERT_NO_FATAL_FAILURE(StartFine());
    EXPECT_LT(GetDip("round"), 0.013); // a vertex may miss the very crest
    EXPECT_LT(GetDip("cone"), 0.045);
    EXPECT_LT(GetDip("square"), 0.001);
    TakeBrush("RelativeHeightFunction", "m_Height", "5", "extent( 80.0 )", "square");
    auto* pStrokes = m_Editor->FindInterface<IPluginStrokes>();
    EXPECT_FLOAT_EQ(pStrokes->GetStrokeSpacing(), 10.0F);
    TakeBrush("BlurFunction", "m_UseOnlyDestBuffer", "true", "extent( 80.0 )", "cone");
    EXPECT_FLOAT_EQ(pStrokes->GetStrokeSpacing(), 20.0F);

    TakeBrush("RelativeHeightFunction", "m_Height", "5", "extent( 40.0 )", "round");
    for (const int32_t iPercent : {50, 0})
    {
        GetInput().iSpacingPercent = iPercent;
        const double fSpacing = iPercent > 0 ? 20.0 : pStrokes->GetStrokeSpacing();
        const std::vector<SVec3> points = DragPoints(GetView(1), {0.3, 0.5}, {0.7, 0.5});
        ASSERT_GT(points.size(), 3U);
        for (size_t i = 1; i < points.size(); ++i)
        {
            EXPECT_NEAR(GetDistance(points[i], points[i - 1]), fSpacing, 0.5);
        }
    }
}

TEST_F(CStrokeFeel, PointsOfALargeBrushLieFartherApartAndTheStatusLineSaysSo)
{
    ASSERT_NO_FATAL_FAILURE(StartFine(2049));
    TakeBrush("RelativeHeightFunction", "m_Height", "5", "extent( 160.0 )", "round");
    const double fCells = 160.0 / 320.0 * 2048.0;
    const double fSpacing = 160.0 * fCells * fCells / 12.0e6;
    ASSERT_GT(fSpacing, m_Editor->FindInterface<IPluginStrokes>()->GetStrokeSpacing());
    const std::vector<SVec3> points = DragPoints(GetView(1), {0.4, 0.5}, {0.6, 0.5});
    ASSERT_GT(points.size(), 3U);
    for (size_t i = 1; i < points.size(); ++i)
    {
        EXPECT_NEAR(GetDistance(points[i], points[i - 1]), fSpacing, 0.5);
    }
    EXPECT_TRUE(m_Window->findChild<QLabel*>("status-words")->text().startsWith("Large brush"));
    GetInput().iSpacingPercent = 5; // who chooses the spacing has it
    EXPECT_LT(GetDistance(points[0], DragPoints(GetView(1), {0.4, 0.5}, {0.6, 0.5})[1]), fSpacing);
}

TEST_F(CStrokeFeel, AStrokeDoesNotClimbItsOwnHill)
{
    ASSERT_NO_FATAL_FAILURE(StartFine());
    TakeBrush("RelativeHeightFunction", "m_Height", "60");
    const std::vector<SVec3> straight = DragPoints(GetView(), {0.4, 0.55}, {0.6, 0.55});
    ASSERT_GT(straight.size(), 10U);
    EXPECT_LT(GetBend(straight), 0.5);
    for (size_t i = 1; i < straight.size(); ++i)
    {
        EXPECT_GT(straight[i].x, straight[i - 1].x);
    }
    // At the place that was aimed at, the height is that of the hill.
    EXPECT_GT(straight.back().y, 60.0F);
    Key("ctrl+z");

    GetInput().bAimAtPress = false;
    const std::vector<SVec3> climbing = DragPoints(GetView(), {0.4, 0.55}, {0.6, 0.55});
    EXPECT_GT(GetBend(climbing), 5.0);
}

TEST_F(CStrokeFeel, AClickIsADab)
{
    ASSERT_NO_FATAL_FAILURE(StartFine());
    TakeBrush(
        "RelativeHeightFunction", "m_Height", "50", "extent( 40.0 ) fade_factor( 1.0 )", "round");
    const std::vector<float> flat = GetHeights();
    MoveTo(GetView(), {0.5, 0.55});
    Do({"mousedown", "1"});
    const std::vector<float> pressed = GetHeights();
    EXPECT_NEAR(*std::max_element(pressed.begin(), pressed.end()), 70.0F, 1.0F);
    Do({"mousemove_relative", "1", "0"});
    Do({"mouseup", "1"});
    EXPECT_TRUE(GetHeights() == pressed) << "the release adds nothing";
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 1U);

    TakeBrush("PointHeightFunction", "m_Height", "0"); // which lives from the way of the mouse
    Do({"mousedown", "1"});
    EXPECT_TRUE(GetHeights() == pressed);
    Do({"mouseup", "1"});
    EXPECT_TRUE(GetHeights() == pressed);
}

TEST_F(CStrokeFeel, TheMarkStaysUnderTheCursorInAllViews)
{
    ASSERT_NO_FATAL_FAILURE(StartFine());
    TakeBrush("SetHeightFunction", "m_Height", "20", "extent( 60.0 )", "disc"); // changes nothing
    // Ground that is green hides a part of it.
    m_Window->GetSettings().render.strDefaultMaterial = "data/materials/grey.mat";
    CViewWidget& view = GetView(1);
    const auto expectMark = [&](const char* pszWhen)
    {
        const QPointF tint = FindTint(view);
        const QPointF cursor =
            view.mapFromGlobal(QPointF(QCursor::pos())) * view.devicePixelRatioF();
        EXPECT_LT(std::hypot(tint.x() - cursor.x(), tint.y() - cursor.y()), 3.0) << pszWhen;
        return tint.x();
    };
    MoveTo(view, {0.25, 0.5}); // on the screen at any scale
    expectMark("hovering");
    const double fOther = FindTint(GetView()).x();
    EXPECT_GE(fOther, 0.0) << "the other view has it, too";
    Do({"mousedown", "1"});
    const double fPressed = expectMark("pressed");
    // Less than the next point of the stroke asks for; whole positions of the window system at 1.5.
    Do({"mousemove_relative", "--", "-3", "0"});
    EXPECT_NEAR(expectMark("moved a little") - fPressed, -3.0, 1.1);
    Do({"mousemove_relative", "--", "-30", "0"});
    expectMark("between two points");
    EXPECT_LT(FindTint(GetView()).x(), fOther - 3.0);
    Do({"mouseup", "1"});
    EXPECT_NEAR(expectMark("released") - fPressed, -33.0, 2.0);
    MoveTo(*m_Window, {0.5, 0.001});
    EXPECT_EQ(FindTint(view), QPointF(-1.0, -1.0));
    EXPECT_EQ(FindTint(GetView()), QPointF(-1.0, -1.0));
}

TEST_F(CStrokeFeel, KeysKeepAStrokeStraightJoinItAndBoundIt)
{
    ASSERT_NO_FATAL_FAILURE(StartFine());
    TakeBrush("SetHeightFunction", "m_Height", "60", "extent( 30.0 )", "disc");
    CViewWidget& view = GetView(1);
    const std::vector<float> flat = GetHeights();
    std::vector<SVec3> points;
    {
        CPointList list(GetHost());
        MoveTo(view, {0.3, 0.3});
        Do({"mousedown", "1"});
        MoveTo(view, {0.42, 0.3});
        Do({"keydown", "c"});
        MoveTo(view, {0.5, 0.5}); // beside the line
        MoveTo(view, {0.6, 0.45});
        Do({"keyup", "c"});
        Do({"mouseup", "1"});
        points = list.points;
    }
    ASSERT_GT(points.size(), 8U);
    EXPECT_LT(GetBend(points), 1.0);
    const SVec3 end = points.back();
    EXPECT_GT(end.x, 170.0F);

    points = JoinTo({0.6, 0.7});
    ASSERT_GT(points.size(), 5U);
    EXPECT_LT(GetDistance(points.front(), end), 0.01);
    EXPECT_GT(GetDistance(points.back(), end), 50.0);
    EXPECT_LT(GetBend(points), 0.5);
    Key("ctrl+z"); // the end of the stroke before is the last one again
    points = JoinTo({0.3, 0.6});
    ASSERT_GT(points.size(), 5U);
    EXPECT_LT(GetDistance(points.front(), end), 0.01);
    const std::vector<float> joined = GetHeights();
    TakeBrush("RampFunction", "m_SideInterpolation", "1"); // from there to here
    JoinTo({0.5, 0.3});
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 3U);
    Key("ctrl+z");
    EXPECT_TRUE(GetHeights() == joined);
    TakeBrush("SetHeightFunction", "m_Height", "60", "extent( 30.0 )", "disc");
    for (int i = 0; i < 2; ++i)
    {
        Key("ctrl+z");
    }
    EXPECT_TRUE(GetHeights() == flat);

    for (const auto& [pszKey, bChanges] : {std::pair("t", false), std::pair("r", true)})
    {
        Do({"keydown", pszKey}); // only lower, only raise; the tool would raise
        Drag(view, {0.4, 0.5}, {0.6, 0.5});
        Do({"keyup", pszKey});
        EXPECT_EQ(GetHeights() != flat, bChanges) << pszKey;
    }
}

TEST_F(CStrokeFeel, ShiftSmoothsAndGivesTheToolBack)
{
    ASSERT_NO_FATAL_FAILURE(StartFine());
    TakeBrush("SetHeightFunction", "m_Height", "80", "extent( 30.0 )", "square");
    auto* pTools = m_Editor->FindInterface<IPluginTools>();
    CViewWidget& view = GetView(1);
    const std::string strScript = m_Folder.Path("recorded.tellur");
    ASSERT_TRUE(m_Editor->GetRecorder()->Start(strScript));
    Drag(view, {0.4, 0.5}, {0.6, 0.5});
    const std::vector<float> plateau = GetHeights();
    Do({"keydown", "shift"});
    Drag(view, {0.4, 0.5}, {0.6, 0.5});
    Do({"keyup", "shift"});
    const std::vector<float> smooth = GetHeights();
    EXPECT_FALSE(smooth == plateau);
    EXPECT_LE(*std::max_element(smooth.begin(), smooth.end()), 80.0F);
    EXPECT_EQ(pTools->GetFunctionName(), "SetHeightFunction");
    EXPECT_FLOAT_EQ(pTools->GetBrushExtent(), 30.0F);
    Drag(view, {0.4, 0.4}, {0.6, 0.4});
    const std::vector<float> set = GetHeights();
    EXPECT_EQ(*std::max_element(set.begin(), set.end()), 80.0F);

    // A key that flies makes Shift a faster flight; the stroke is the tool's.
    Do({"keydown", "w"});
    Do({"keydown", "shift"});
    MoveTo(view, {0.4, 0.7});
    Do({"mousedown", "1"});
    EXPECT_EQ(pTools->GetFunctionName(), "SetHeightFunction");
    Do({"keyup", "shift"});
    Do({"keyup", "w"});
    Do({"mouseup", "1"});

    const std::string strHeights = m_Folder.Path("now.height");
    ASSERT_TRUE(GetHost().GetEngine().GetWorld()->GetTerrain()->SaveHeightMap(
        strHeights.c_str(), nullptr, 0, 0));
    ASSERT_TRUE(m_Editor->GetRecorder()->Stop());
    EXPECT_EQ(ReplayScript(strScript, m_Folder.Path("replayed.height")), ReadBytes(strHeights));
}
