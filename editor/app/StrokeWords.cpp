#include "editor/app/StrokeWords.h"

#include "editor/app/SHandState.h"
#include "editor/app/SInputSettings.h"
#include "editor/core/Words.h"
#include "host/IPluginTools.h"

#include <QStringList>

QString GetStrokeWords(const SInputSettings& settings, const SHandState& hand, IPluginTools* pTools)
{
    const SSymmetry& symmetry = settings.symmetry;
    QStringList words;
    if (symmetry.bTurned)
    {
        words << QString(Words("turned %1")).arg(symmetry.iTurns);
    }
    else if (symmetry.IsOn())
    {
        words << QString(Words("mirror")) + (symmetry.bAcrossX ? " x" : "") +
                     (symmetry.bAcrossZ ? " z" : "");
    }
    if (pTools != nullptr && settings.builds.contains(pTools->GetFunctionName()))
    {
        words << Words("builds up");
    }
    if (hand.path.IsOn())
    {
        const auto nKnots = static_cast<qulonglong>(hand.path.GetCount());
        words << QString(Words("path of %1%2"))
                     .arg(nKnots)
                     .arg(hand.path.IsClosed() ? Words(", closed") : "");
    }
    return words.join(", ");
}
