#include "editor/script/CProtectionWriter.h"

#include "editor/core/CEditorHost.h"
#include "editor/core/SProtectAct.h"
#include "editor/script/IScriptSink.h"
#include "editor/script/ProtectionText.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "parser/DeclarativeText.h"

#include <algorithm>
#include <string>

namespace
{

std::string GetCall(const SProtectAct& act)
{
    const std::string strA = MakeExactNumber(act.a);
    switch (act.eKind)
    {
    case EProtect::Disc:
        return "protect_disc( " + strA + ", " + MakeExactNumber(act.b) + ", " +
               MakeExactNumber(act.c) + (act.bProtected ? ", 1 )\n" : ", 0 )\n");
    case EProtect::Invert:
        return "protect_invert()\n";
    case EProtect::Clear:
        return "protect_clear()\n";
    case EProtect::Grow:
        return "protect_grow( " + std::to_string(static_cast<int>(act.a)) + " )\n";
    case EProtect::Slope:
        return "protect_slope( " + strA + " )\n";
    case EProtect::Heights:
        return "protect_height( " + strA + ", " + MakeExactNumber(act.b) + " )\n";
    case EProtect::Picture:
        break;
    }
    return {};
}

} // namespace

CProtectionWriter::CProtectionWriter(CEditorHost& host, IScriptSink& sink)
    : m_Host(host)
    , m_Sink(sink)
{
}

const CVertexProtection& CProtectionWriter::GetProtection() const
{
    static const CVertexProtection s_None;
    const CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
    return pTerrain != nullptr ? pTerrain->GetProtection() : s_None;
}

bool CProtectionWriter::WriteDifference()
{
    const bool bOther = HasOther();
    if (bOther)
    {
        m_Sink.Append(GetSquareCalls(m_Known, GetProtection(), "protected"));
        Take();
    }
    return bOther;
}

bool CProtectionWriter::WriteStep(const std::vector<SProtectAct>& acts)
{
    std::string strText;
    for (const SProtectAct& act : acts)
    {
        if (act.eKind == EProtect::Picture)
        {
            return false; // it may be gone, or another one, when the script is played
        }
        strText += GetCall(act);
    }
    m_Sink.Append(acts.size() > 1 ? "protect_stroke()\n" + strText + "protect_end()\n" : strText);
    Take();
    return true;
}
