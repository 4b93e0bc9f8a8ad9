// The one persistent setting.

#include "host/FileSystem.h"
#include "parser/KeywordValues.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/plugin/IPluginImpl.h"

namespace
{

constexpr const char* SETTING_KEY = "Tellur2DDrawUndoMgrStackSize";
constexpr int32_t DEFAULT_UNDO_DEPTH = 10;

} // namespace

void IPluginImpl::ResetSettings()
{
    m_2DDrawUndoMgrStackSize = DEFAULT_UNDO_DEPTH;
}

void IPluginImpl::SaveSettings(fs::ifile& file)
{
    file.printf("\n!%s( i )\n\n", SETTING_KEY);
    file.printf("%s( %d )\n", SETTING_KEY, m_2DDrawUndoMgrStackSize);
}

void IPluginImpl::LoadSettings(const CTCPARSE_KEYWORD* pFirst)
{
    for (const CTCPARSE_KEYWORD* pKey = pFirst; pKey != nullptr; pKey = pKey->next)
    {
        if (IsKeyword(pKey, SETTING_KEY))
        {
            m_2DDrawUndoMgrStackSize = GetIntValue(pKey->params);
            if (m_pEditTerrainTypeMode != nullptr)
            {
                m_pEditTerrainTypeMode->ApplyUndoDepth();
            }
        }
    }
}
