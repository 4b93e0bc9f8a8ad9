#include "editor/app/SEditorSettings.h"

#include "editor/app/CEditor.h"

#include <QSettings>

#include <algorithm>

namespace
{

template <typename T> void ReadNumber(const QSettings& file, const char* pszKey, T& value)
{
    const QVariant text = file.value(pszKey);
    bool bNumber = false;
    const double fValue = text.toDouble(&bNumber);
    if (bNumber)
    {
        value = static_cast<T>(fValue);
    }
}

void ReadBool(const QSettings& file, const char* pszKey, bool& bValue)
{
    bValue = file.value(pszKey, bValue).toBool();
}

} // namespace

void SEditorSettings::Load(const std::string& strFile)
{
    const QSettings file(QString::fromStdString(strFile), QSettings::IniFormat);
    ReadBool(file, "input/sample_strokes", input.bSampleStrokes);
    ReadBool(file, "input/aim_at_press", input.bAimAtPress);
    ReadNumber(file, "input/spacing_percent", input.iSpacingPercent);
    ReadBool(file, "pen/pressure", input.form.bPen);
    ReadNumber(file, "pen/curve", input.form.fPenCurve);
    ReadNumber(file, "brush/turn_degrees", input.form.fDegrees);
    int iTurn = 0;
    ReadNumber(file, "brush/turn", iTurn);
    ReadBool(file, "input/mirror_x", input.symmetry.bAcrossX);
    ReadBool(file, "input/mirror_z", input.symmetry.bAcrossZ);
    ReadBool(file, "input/turned", input.symmetry.bTurned);
    ReadNumber(file, "input/turns", input.symmetry.iTurns);
    ReadNumber(file, "input/builds_a_second", input.iBuildsASecond);
    for (const QString& strFunction : file.value("input/builds_up").toStringList())
    {
        input.builds.insert(strFunction.toStdString());
    }
    ReadBool(file, "input/keyboard_navigation", bKeyboardNavigation);
    ReadBool(file, "view/grid", render.bGrid);
    ReadNumber(file, "view/sun_yaw", render.fSunYaw);
    ReadNumber(file, "view/sun_pitch", render.fSunPitch);
    ReadNumber(file, "view/ambient", render.fAmbient);
    ReadNumber(file, "view/type_blend", render.fTypeBlend);
    ReadNumber(file, "document/autosave_seconds", iAutosaveSeconds);
    ReadNumber(file, "document/undo_megabytes", iUndoMegabytes);
    // A person may have edited the file.
    render.fAmbient = std::clamp(render.fAmbient, 0.0F, 1.0F);
    render.fTypeBlend = std::clamp(render.fTypeBlend, 0.0F, 1.0F);
    render.fSunPitch = std::clamp(render.fSunPitch, 0.0F, 90.0F);
    input.iSpacingPercent = std::clamp(input.iSpacingPercent, 0, SInputSettings::MOST_SPACING);
    input.form.fPenCurve =
        std::clamp(input.form.fPenCurve, -SFormSettings::MOST_CURVE, SFormSettings::MOST_CURVE);
    input.form.fDegrees = std::clamp(input.form.fDegrees, 0.0F, SFormSettings::FULL_TURN);
    input.form.eTurn =
        static_cast<EBrushTurn>(std::clamp(iTurn, 0, static_cast<int>(EBrushTurn::Random)));
    input.iBuildsASecond = std::clamp(input.iBuildsASecond, 0, SInputSettings::MOST_BUILDS);
    input.symmetry.iTurns =
        std::clamp(input.symmetry.iTurns, SSymmetry::LEAST_TURNS, SSymmetry::MOST_TURNS);
    iAutosaveSeconds = std::clamp(iAutosaveSeconds, 0, MOST_SECONDS);
    iUndoMegabytes = std::clamp(iUndoMegabytes, 0, MOST_MEGABYTES);
}

bool SEditorSettings::Save(const std::string& strFile) const
{
    QSettings file(QString::fromStdString(strFile), QSettings::IniFormat);
    file.setValue("input/sample_strokes", input.bSampleStrokes);
    file.setValue("input/aim_at_press", input.bAimAtPress);
    file.setValue("input/spacing_percent", input.iSpacingPercent);
    file.setValue("pen/pressure", input.form.bPen);
    file.setValue("pen/curve", static_cast<double>(input.form.fPenCurve));
    file.setValue("brush/turn_degrees", static_cast<double>(input.form.fDegrees));
    file.setValue("brush/turn", static_cast<int>(input.form.eTurn));
    file.setValue("input/mirror_x", input.symmetry.bAcrossX);
    file.setValue("input/mirror_z", input.symmetry.bAcrossZ);
    file.setValue("input/turned", input.symmetry.bTurned);
    file.setValue("input/turns", input.symmetry.iTurns);
    file.setValue("input/builds_a_second", input.iBuildsASecond);
    QStringList builds;
    for (const std::string& strFunction : input.builds)
    {
        builds << QString::fromStdString(strFunction);
    }
    file.setValue("input/builds_up", builds);
    file.setValue("input/keyboard_navigation", bKeyboardNavigation);
    file.setValue("view/grid", render.bGrid);
    file.setValue("view/sun_yaw", static_cast<double>(render.fSunYaw));
    file.setValue("view/sun_pitch", static_cast<double>(render.fSunPitch));
    file.setValue("view/ambient", static_cast<double>(render.fAmbient));
    file.setValue("view/type_blend", static_cast<double>(render.fTypeBlend));
    file.setValue("document/autosave_seconds", iAutosaveSeconds);
    file.setValue("document/undo_megabytes", iUndoMegabytes);
    file.sync();
    return file.status() == QSettings::NoError;
}

void SEditorSettings::ApplyTo(CEditor& editor) const
{
    editor.GetAutosave().SetInterval(std::chrono::seconds(iAutosaveSeconds));
    editor.GetHost().GetUndoStack().SetLimit(static_cast<size_t>(iUndoMegabytes) << 20U);
}
