#include "editor/app/SEditorSettings.h"

#include "editor/app/CEditor.h"
#include "editor/app/CIniFile.h"
#include "editor/app/CScriptBar.h"

#include <algorithm>

QStringList SEditorSettings::Load(const QVariantMap& values)
{
    QStringList wrong;
    SIniReader file = {values, wrong};
    file.Read("input/sample_strokes", input.bSampleStrokes);
    file.Read("input/aim_at_press", input.bAimAtPress);
    file.Read("input/spacing_percent", input.iSpacingPercent);
    file.Read("mouse/orbit", input.mouse.iOrbit);
    file.Read("mouse/pan", input.mouse.iPan);
    file.Read("mouse/zoom", input.mouse.iZoom);
    file.Read("mouse/fingers_pan", input.mouse.bFingersPan);
    file.Read("pen/pressure", input.form.bPen);
    file.Read("pen/curve", input.form.fPenCurve);
    file.Read("brush/turn_degrees", input.form.fDegrees);
    int iTurn = 0;
    file.Read("brush/turn", iTurn);
    file.Read("input/mirror_x", input.symmetry.bAcrossX);
    file.Read("input/mirror_z", input.symmetry.bAcrossZ);
    file.Read("input/turned", input.symmetry.bTurned);
    file.Read("input/turns", input.symmetry.iTurns);
    file.Read("input/builds_a_second", input.iBuildsASecond);
    for (const QString& strFunction : values.value("input/builds_up").toStringList())
    {
        if (!strFunction.isEmpty()) // an empty list is written as an empty text
        {
            input.builds.insert(strFunction.toStdString());
        }
    }
    file.Read("input/keyboard_navigation", bKeyboardNavigation);
    file.Read("view/grid", render.bGrid);
    file.Read("view/smooth_edges", bSmoothEdges);
    file.Read("view/sun_yaw", render.fSunYaw);
    file.Read("view/sun_pitch", render.fSunPitch);
    file.Read("view/ambient", render.fAmbient);
    file.Read("view/type_blend", render.fTypeBlend);
    file.Read("view/steep_degrees", render.fSteepDegrees);
    file.Read("view/eye_height", fEyeHeight);
    file.Read("script/speed", iScriptSpeed);
    file.Read("document/autosave_seconds", iAutosaveSeconds);
    file.Read("document/undo_megabytes", iUndoMegabytes);
    bBegun = !values.isEmpty(); // a file from before it was noted is that of somebody who has begun
    file.Read("start/begun", bBegun);
    file.Read("start/stroke_made", bStrokeMade);
    strTool = values.value("start/tool").toString().toStdString(); // one that is none is not taken
    input.form.eTurn =
        static_cast<EBrushTurn>(std::clamp(iTurn, 0, static_cast<int>(EBrushTurn::Random)));
    Clamp();
    return wrong;
}

// A person may have edited the file.
void SEditorSettings::Clamp()
{
    render.fAmbient = std::clamp(render.fAmbient, 0.0F, 1.0F);
    render.fTypeBlend = std::clamp(render.fTypeBlend, 0.0F, 1.0F);
    render.fSunPitch = std::clamp(render.fSunPitch, 0.0F, 90.0F);
    input.iSpacingPercent = std::clamp(input.iSpacingPercent, 0, SInputSettings::MOST_SPACING);
    input.form.fPenCurve =
        std::clamp(input.form.fPenCurve, -SFormSettings::MOST_CURVE, SFormSettings::MOST_CURVE);
    input.form.fDegrees = std::clamp(input.form.fDegrees, 0.0F, SFormSettings::FULL_TURN);
    input.iBuildsASecond = std::clamp(input.iBuildsASecond, 0, SInputSettings::MOST_BUILDS);
    input.symmetry.iTurns =
        std::clamp(input.symmetry.iTurns, SSymmetry::LEAST_TURNS, SSymmetry::MOST_TURNS);
    constexpr int LAST_CHORD = static_cast<int>(SMouseBindings::CHORDS.size()) - 1;
    for (int* pChord : {&input.mouse.iOrbit, &input.mouse.iPan, &input.mouse.iZoom})
    {
        *pChord = std::clamp(*pChord, 0, LAST_CHORD);
    }
    render.fSteepDegrees = std::clamp(render.fSteepDegrees, 0.0F, 90.0F);
    fEyeHeight = std::clamp(fEyeHeight, CGroundWalk::LEAST_EYE, CGroundWalk::MOST_EYE);
    iScriptSpeed = std::clamp(iScriptSpeed, 0, static_cast<int>(EScriptSpeed::Slow));
    iAutosaveSeconds = std::clamp(iAutosaveSeconds, 0, MOST_SECONDS);
    iUndoMegabytes = std::clamp(iUndoMegabytes, 0, MOST_MEGABYTES);
}

void SEditorSettings::Store(QVariantMap& values) const
{
    values["input/sample_strokes"] = input.bSampleStrokes;
    values["input/aim_at_press"] = input.bAimAtPress;
    values["input/spacing_percent"] = input.iSpacingPercent;
    values["mouse/orbit"] = input.mouse.iOrbit;
    values["mouse/pan"] = input.mouse.iPan;
    values["mouse/zoom"] = input.mouse.iZoom;
    values["mouse/fingers_pan"] = input.mouse.bFingersPan;
    values["pen/pressure"] = input.form.bPen;
    values["pen/curve"] = static_cast<double>(input.form.fPenCurve);
    values["brush/turn_degrees"] = static_cast<double>(input.form.fDegrees);
    values["brush/turn"] = static_cast<int>(input.form.eTurn);
    values["input/mirror_x"] = input.symmetry.bAcrossX;
    values["input/mirror_z"] = input.symmetry.bAcrossZ;
    values["input/turned"] = input.symmetry.bTurned;
    values["input/turns"] = input.symmetry.iTurns;
    values["input/builds_a_second"] = input.iBuildsASecond;
    QStringList builds;
    for (const std::string& strFunction : input.builds)
    {
        builds << QString::fromStdString(strFunction);
    }
    values["input/builds_up"] = builds.isEmpty() ? QVariant(QString("")) : QVariant(builds);
    values["input/keyboard_navigation"] = bKeyboardNavigation;
    values["view/grid"] = render.bGrid;
    values["view/smooth_edges"] = bSmoothEdges;
    values["view/sun_yaw"] = static_cast<double>(render.fSunYaw);
    values["view/sun_pitch"] = static_cast<double>(render.fSunPitch);
    values["view/ambient"] = static_cast<double>(render.fAmbient);
    values["view/type_blend"] = static_cast<double>(render.fTypeBlend);
    values["view/steep_degrees"] = static_cast<double>(render.fSteepDegrees);
    values["view/eye_height"] = static_cast<double>(fEyeHeight);
    values["script/speed"] = iScriptSpeed;
    values["document/autosave_seconds"] = iAutosaveSeconds;
    values["document/undo_megabytes"] = iUndoMegabytes;
    values["start/begun"] = bBegun;
    values["start/stroke_made"] = bStrokeMade;
    values["start/tool"] = QString::fromStdString(strTool);
}

void SEditorSettings::ApplyTo(CEditor& editor) const
{
    editor.GetAutosave().SetInterval(std::chrono::seconds(iAutosaveSeconds));
    editor.GetHost().GetUndoStack().SetLimit(static_cast<size_t>(iUndoMegabytes) << 20U);
}
