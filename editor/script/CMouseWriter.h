#pragma once

#include "host/IPluginStrokes.h"

#include <string>

class CHostInput;
class IScriptSink;
struct SHostEvent;

// The part of a replay script that says what the mouse did: presses, moves and releases with the
// points that the plug-in was told, the keys that were held, and how the brush was put down. Owned
// by the script's writer. Everything given is borrowed.
class CMouseWriter
{
public:
    CMouseWriter(const CHostInput& input, IScriptSink& sink);

    // Of whoever plays the script nothing is known any longer: no keys, no form.
    void Forget();
    // To be called before the plug-in sees an event: during it keys may be let go, and a release
    // puts the form back.
    void TakeState();
    void Write(const SHostEvent& event);

private:
    void WriteKeys();
    void WriteForm();

    const CHostInput& m_Input;
    IScriptSink& m_Sink;
    std::string m_Keys;      // held, as the script has them
    bool m_bKeys = false;    // the script has said so
    std::string m_EventKeys; // held when the event came
    SPointForm m_EventForm;  // of points, then
    SPointForm m_Form;       // of points, as the script has it
};
