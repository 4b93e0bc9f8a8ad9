#include "editor/script/CMouseWriter.h"

#include "editor/core/CHostInput.h"
#include "editor/core/IHostObserver.h"
#include "editor/script/IScriptSink.h"
#include "framework/core/KeyState.h"
#include "parser/DeclarativeText.h"

namespace
{

std::string GetPoint(const SVec3& point)
{
    return "[" + MakeExactNumber(point.x) + ", " + MakeExactNumber(point.y) + ", " +
           MakeExactNumber(point.z) + "]";
}

std::string GetKeys()
{
    const bool bControl = IsKeyDown(EKey::Control);
    const bool bAlt = IsKeyDown(EKey::Alt);
    return bControl && bAlt ? "ctrl+alt" : bControl ? "ctrl" : bAlt ? "alt" : "";
}

} // namespace

CMouseWriter::CMouseWriter(const CHostInput& input, IScriptSink& sink)
    : m_Input(input)
    , m_Sink(sink)
{
}

void CMouseWriter::Forget()
{
    m_Keys.clear();
    m_bKeys = false;
    m_Form = {};
}

void CMouseWriter::TakeState()
{
    m_EventKeys = GetKeys();
    m_EventForm = m_Input.GetPointForm();
}

void CMouseWriter::WriteKeys()
{
    // A script holds its keys until it says others.
    if (!m_bKeys || m_EventKeys != m_Keys)
    {
        m_bKeys = true;
        m_Keys = m_EventKeys;
        m_Sink.Append("keys( " + QuoteText(m_Keys) + " )\n");
    }
}

void CMouseWriter::WriteForm()
{
    const SPointForm& form = m_EventForm;
    std::string strText;
    if (form.fPower != m_Form.fPower)
    {
        strText += "pressure( " + MakeExactNumber(form.fPower) + " )\n";
    }
    SPointForm turn = m_Form;
    turn.fPower = form.fPower;
    if (form != turn)
    {
        strText += "turn( [" + MakeExactNumber(form.fXX) + ", " + MakeExactNumber(form.fXZ) + ", " +
                   MakeExactNumber(form.fZX) + ", " + MakeExactNumber(form.fZZ) + "] )\n";
    }
    m_Form = form;
    m_Sink.Append(strText);
}

void CMouseWriter::Write(const SHostEvent& event)
{
    WriteKeys();
    WriteForm();
    const bool bMove = event.eKind == EHostEvent::MouseMove;
    std::string strCall = event.eKind == EHostEvent::ButtonDown ? "press"
                          : bMove                               ? "move"
                                                                : "release";
    // The point as the plug-in was told it, so that a replay depends on no camera.
    strCall += event.bHit ? "_at( " + GetPoint(event.hit) : "_miss(";
    if (bMove)
    {
        strCall += (event.bHit ? ", " : " ") + std::to_string(event.step.dy);
    }
    strCall += bMove || event.bHit ? " )\n" : ")\n";
    m_Sink.Append(strCall);
    if (event.eKind == EHostEvent::ButtonUp)
    {
        m_Form = {}; // the release makes it so for whoever plays the script, too
    }
}
