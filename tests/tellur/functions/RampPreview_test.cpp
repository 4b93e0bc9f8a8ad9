#include "tellur/functions/CRampFunction.h"
#include "tests/tellur/functions/FunctionParts.h"

namespace
{

std::string GetLine(const SDebugLine& line)
{
    char szText[128];
    std::snprintf(szText,
                  sizeof(szText),
                  "%g %g %g - %g %g %g",
                  line.from.x,
                  line.from.y,
                  line.from.z,
                  line.to.x,
                  line.to.y,
                  line.to.z);
    return szText;
}

using CRampPreview = CDragTest;

TEST_F(CRampPreview, ShowsItselfAsTwelveLines)
{
    CEngineHost& engine = m_Host.GetEngine();
    CRampFunction ramp;
    SetField(ramp, "m_SideInterpolation", "0.5");
    SetField(ramp, "m_FrontBackInterpolation", "0.5");

    EXPECT_FALSE(ramp.Render(&session, &brush, nullptr)) << "no point yet";
    m_Face.Hit(0.0F, 0.0F, 100.0F); // on the border
    m_Face.Hit(100.0F, 0.0F, 100.0F);
    ramp.Start(&session, &brush, 1, 2, 3);
    ramp.OnMouseMove(&session, &brush, 1, 2, 3, 0, 0);
    EXPECT_FALSE(ramp.Render(&session, nullptr, nullptr));
    EXPECT_EQ(m_Log.GetText(), "[CRampFunction::Render] no brush interface\n");
    EXPECT_TRUE(engine.GetDebugLines().empty());

    // A strip along x: 20 to each side, 10 with the full effect, 25 at each end blend in.
    ASSERT_TRUE(ramp.Render(&session, &brush, nullptr));
    std::vector<std::string> lines;
    for (const SDebugLine& line : engine.GetDebugLines())
    {
        lines.push_back(GetLine(line));
        EXPECT_EQ(line.color.r * line.color.g * line.color.b * line.color.a, 1.0F);
    }
    EXPECT_EQ(lines,
              (std::vector<std::string>{"0 0 110 - 0 0 90",
                                        "100 0 110 - 100 0 90",
                                        "100 0 80 - 100 0 90",
                                        "0 0 80 - 0 0 90",
                                        "0 0 90 - 100 0 90",
                                        "0 0 80 - 100 0 80",
                                        "100 0 120 - 100 0 110",
                                        "0 0 120 - 0 0 110",
                                        "0 0 110 - 100 0 110",
                                        "0 0 120 - 100 0 120",
                                        "25 0 120 - 25 0 80",
                                        "75 0 120 - 75 0 80"}));

    // While hovering: 100 to each side of the cursor along both axes, at its height.
    engine.BeginFrame();
    const SVec3 cursor = {500.0F, 7.0F, 300.0F};
    ASSERT_TRUE(ramp.Render(nullptr, &brush, &cursor));
    const SDebugLine across = engine.GetDebugLines().front();
    EXPECT_NEAR(across.from.x + across.to.x, 800.0F, 1e-3F);
    EXPECT_NEAR(across.from.z + across.to.z, 400.0F, 1e-3F);
    EXPECT_EQ(across.from.y, 7.0F);
}

} // namespace
