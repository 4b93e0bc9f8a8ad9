#include "editor/app/CExtentNote.h"

#include "editor/app/CCursorNote.h"
#include "editor/app/CEditor.h"
#include "editor/core/Words.h"
#include "host/IPluginTools.h"

#include <utility>

CExtentNote::CExtentNote(CEditor& editor, std::function<CCursorNote*()> findNote)
    : m_Editor(editor)
    , m_FindNote(std::move(findNote))
{
    m_Editor.GetHost().GetObservers().Add(this);
}

CExtentNote::~CExtentNote()
{
    m_Editor.GetHost().GetObservers().Remove(this);
}

void CExtentNote::OnBeforeEvent(const SHostEvent& /*event*/)
{
    auto* pTools = m_Editor.FindInterface<IPluginTools>();
    m_Before = pTools != nullptr ? pTools->GetBrushExtent() : m_Before;
}

void CExtentNote::OnEvent(const SHostEvent& event)
{
    if (event.eKind != EHostEvent::Action)
    {
        return;
    }
    auto* pTools = m_Editor.FindInterface<IPluginTools>();
    const float fExtent = pTools != nullptr ? pTools->GetBrushExtent() : 0.0F;
    CCursorNote* pNote = m_FindNote();
    if (fExtent > 0.0F && fExtent != m_Before && pNote != nullptr) // 0: no brush is up
    {
        pNote->ShowValue(QString(Words("brush %1")).arg(fExtent, 0, 'f', 1));
    }
}
