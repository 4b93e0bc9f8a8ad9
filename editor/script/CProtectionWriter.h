#pragma once

#include "engine/terrain/CVertexProtection.h"

#include <vector>

class CEditorHost;
class IScriptSink;
struct SProtectAct;

// The part of a replay script that says which vertices are protected, and what the script has led
// to so far. Owned by the script's writer. Everything given is borrowed.
class CProtectionWriter
{
public:
    CProtectionWriter(CEditorHost& host, IScriptSink& sink);

    // The script has led to what there is now.
    void Take() { m_Known = GetProtection(); }

    // Whether it has led to something else.
    bool HasOther() const { return m_Known.GetId() != GetProtection().GetId(); }

    // Writes what is protected otherwise than the script has led to. Whoever plays that drops all
    // steps, which were made under another protection. False when there is nothing to write.
    bool WriteDifference();
    // Writes what a step consists of, so that whoever plays it has a step, too. False when it
    // cannot be told so.
    bool WriteStep(const std::vector<SProtectAct>& acts);

private:
    const CVertexProtection& GetProtection() const;

    CEditorHost& m_Host;
    IScriptSink& m_Sink;
    CVertexProtection m_Known;
};
