// Scripting: the plug-in's own state by keyword.

#include "brushes/CTellurBrush.h"
#include "framework/core/CResourceScope.h"
#include "framework/core/ResourceModule.h"
#include "host/EditorHost.h"
#include "host/FileSystem.h"
#include "host/ModeManager.h"
#include "modes/TerraformingState.h"
#include "modification/CTerrainModification.h"
#include "parser/KeywordValues.h"
#include "plugin/IPluginImpl.h"
#include "resources/PluginResources.h"

#include <algorithm>
#include <utility>

EScriptResult IPluginImpl::Play(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy)
{
    const CResourceScope scope(&GetPluginResources());
    const auto toResult = [](bool bDone)
    {
        return bDone ? EScriptResult::Done : EScriptResult::Failed;
    };
    if (IsKeyword(pKeyword, "brush"))
    {
        return toResult(PlayBrush(pKeyword, strWhy));
    }
    if (IsKeyword(pKeyword, "mode"))
    {
        return toResult(PlayMode(pKeyword, strWhy));
    }
    if (IsKeyword(pKeyword, "auto_normals"))
    {
        m_bAutoUpdateNormals = GetIntValue(pKeyword->params) != 0;
        return EScriptResult::Done;
    }
    return EScriptResult::Unknown;
}

bool IPluginImpl::IsDragInProgress() const
{
    const auto& pSession = GetTerraformingState().pSession;
    return pSession != nullptr && pSession->IsInProgress();
}

bool IPluginImpl::PlayBrush(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy)
{
    auto pBrush = std::make_unique<CTellurBrush>();
    if (!pBrush->Load(pKeyword->block))
    {
        strWhy = "the brush block cannot be used, the log says why";
        return false;
    }
    for (const CTCPARSE_KEYWORD* pKey = pKeyword->block; pKey != nullptr; pKey = pKey->next)
    {
        if (IsKeyword(pKey, "mask_enabled"))
        {
            pBrush->SetMaskEnabled(GetIntValue(pKey->params) != 0);
        }
    }
    CTellurBrush* pNew = pBrush.get();
    CBrushContainer::CBrushList old;
    if (!IsDragInProgress()) // a drag keeps the brush it began with
    {
        old.swap(m_ScriptBrushes);
    }
    m_ScriptBrushes.push_back(std::move(pBrush));
    SetCurrentBrush(pNew);
    return true;
}

bool IPluginImpl::PlayMode(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy)
{
    const std::pair<const char*, int32_t> modes[] = {{"terraforming", m_TerraformingModeId},
                                                     {"export_extent", m_ExportExtentModeId},
                                                     {"edit_terrain_type", m_EditTerrainTypeModeId},
                                                     {"none", -1}};
    const char* pszName = GetStringValue(pKeyword->params);
    const std::string strName = pszName != nullptr ? pszName : "";
    const auto* pMode = std::find_if(std::begin(modes),
                                     std::end(modes),
                                     [&](const auto& mode) { return strName == mode.first; });
    if (pMode == std::end(modes))
    {
        strWhy = "there is no mode \"" + strName + "\"";
        return false;
    }
    if (m_pEditorHost->GetModeManager()->GetCurrentModeId() == pMode->second)
    {
        return true;
    }
    if (!SetMode(pMode->second, 0))
    {
        strWhy = "the mode \"" + strName + "\" was refused";
        return false;
    }
    return true;
}

bool IPluginImpl::WriteState(fs::ifile& file)
{
    if (m_pCurrentBrush != nullptr)
    {
        file << "brush()\n{\n";
        if (!m_pCurrentBrush->Save(file, 2))
        {
            return false;
        }
        file.printf("  mask_enabled( %d )\n}\n\n", m_pCurrentBrush->IsMaskEnabled() ? 1 : 0);
    }
    const int iMode = m_pEditorHost->GetModeManager()->GetCurrentModeId();
    const char* pszMode = iMode == -1                        ? "none"
                          : iMode == m_TerraformingModeId    ? "terraforming"
                          : iMode == m_ExportExtentModeId    ? "export_extent"
                          : iMode == m_EditTerrainTypeModeId ? "edit_terrain_type"
                                                             : nullptr;
    if (pszMode != nullptr) // a mode of another plug-in is not ours to set
    {
        file.printf("mode( \"%s\" )\n", pszMode);
    }
    return file.printf("auto_normals( %d )\n", m_bAutoUpdateNormals ? 1 : 0) > 0;
}

SDragStatistics IPluginImpl::TakeDragStatistics()
{
    return std::exchange(m_DragStatistics, {});
}

std::string IPluginImpl::GetFunctionName()
{
    const char* pszName = m_pCurrentBrush != nullptr && m_pCurrentBrush->GetRTTIObject() != nullptr
                              ? m_pCurrentBrush->GetFunctionName()
                              : nullptr;
    return pszName != nullptr ? pszName : "";
}
