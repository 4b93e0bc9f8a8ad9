#include "editor/app/CUnsavedWork.h"

#include "editor/app/CDocumentActions.h"
#include "editor/app/CEditor.h"
#include "editor/app/CEditorFace.h"
#include "host/IPluginScript.h"
#include "host/Log.h"

CUnsavedWork::CUnsavedWork(CEditor& editor, const CEditorFace& face, CDocumentActions& documents)
    : m_Editor(editor)
    , m_Face(face)
    , m_Documents(documents)
{
    m_Editor.GetHost().GetModes().SetGuard(this);
}

CUnsavedWork::~CUnsavedWork()
{
    m_Editor.GetHost().GetModes().SetGuard(nullptr);
}

bool CUnsavedWork::MayLeave()
{
    return MayDropPainting() && MayDropBrushes();
}

bool CUnsavedWork::MayActivate(int32_t iModeId)
{
    IPluginScript* pScript = m_Editor.GetPluginScript();
    return pScript == nullptr || m_Face.IsScriptPlayed() || !pScript->WouldDropPainting(iModeId) ||
           MayDropPainting();
}

void CUnsavedWork::OnActivated(int32_t /*iModeId*/)
{
    IPluginScript* pScript = m_Editor.GetPluginScript();
    const std::string strBitmap = pScript != nullptr ? pScript->GetUnreadBitmap() : std::string();
    if (!strBitmap.empty())
    {
        CrashLog("[CUnsavedWork::OnActivated] %s could not be read, nothing can be painted: it is "
                 "read again when Edit is switched on with another bitmap and then with this one\n",
                 strBitmap.c_str());
    }
}

bool CUnsavedWork::MayDropPainting()
{
    IPluginScript* pScript = m_Editor.GetPluginScript();
    const std::string strFile = pScript != nullptr ? pScript->GetUnsavedBitmap() : std::string();
    return strFile.empty() ||
           m_Documents.MayDrop(QString::fromStdString(strFile),
                               "The bitmap cannot be saved.",
                               [&] { return pScript->SaveBitmap(strFile.c_str()); });
}

bool CUnsavedWork::MayDropBrushes()
{
    IPluginScript* pScript = m_Editor.GetPluginScript();
    return pScript == nullptr || !pScript->HasUnsavedBrushes() ||
           m_Documents.MayDrop("the defined brushes",
                               "The brushes cannot be saved.",
                               [pScript] { return pScript->SaveBrushes(); });
}
