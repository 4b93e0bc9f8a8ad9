#include "tellur/plugin/CBrushLibrary.h"

#include "host/EditorHost.h"
#include "host/Log.h"
#include "tellur/brushes/BrushFileCopy.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/functions/CBlurFunction.h"
#include "tellur/functions/CPointHeightFunction.h"
#include "tellur/functions/CPosterizeFunction.h"
#include "tellur/functions/CRampFunction.h"
#include "tellur/functions/CRelativeHeightFunction.h"
#include "tellur/functions/CSetHeightFunction.h"
#include "tellur/panel/SaveBrushes.h"

#include <memory>
#include <string>

namespace
{

constexpr const char* TOOL_BRUSH_IMAGE = ".\\data\\brushes\\round.png";

} // namespace

void CBrushLibrary::CreateFunctions()
{
    const auto add = [this](ITellurFunction* pFunction, const char* pszName)
    {
        if (!m_FunctionContainer.AddFunction(pFunction))
        {
            CrashLog("[IPluginImpl::InitializeFunctionsAndBrushes] cannot add %s function\n",
                     pszName);
            delete pFunction;
        }
    };
    add(new CPointHeightFunction, "PointHeight");
    add(new CRelativeHeightFunction, "RelativeHeight");
    add(new CBlurFunction, "Blur");
    add(new CSetHeightFunction, "SetHeight");
    add(new CRampFunction, "Ramp");
    add(new CPosterizeFunction, "Posterize");
}

void CBrushLibrary::InitializeFunctionsAndBrushes()
{
    CreateFunctions();
    for (const auto& pFunction : m_FunctionContainer.GetFunctions())
    {
        std::unique_ptr<ITellurFunction> pInstance(pFunction->Clone());
        const bool bNew = m_BrushContainer.FindBrush(pInstance->GetClassName()) == nullptr;
        if (m_BrushContainer.CreateBrush(
                pInstance->GetClassName(), pInstance.get(), TOOL_BRUSH_IMAGE) == nullptr)
        {
            CrashLog("[IPluginImpl::InitializeBrushes] cannot create %s brush\n",
                     pInstance->GetClassName());
        }
        else if (bNew)
        {
            static_cast<void>(pInstance.release()); // the brush has it
        }
    }
}

void CBrushLibrary::LoadPredefined()
{
    RecoverBrushFile(PREDEFINED_BRUSHES);
    m_BrushContainer.LoadPredefinedBrushes(PREDEFINED_BRUSHES, &m_BrushFaults);
}

bool CBrushLibrary::AddToPredefined(CTellurBrush* pBrush)
{
    if (pBrush == nullptr)
    {
        CrashLog("[IPluginImpl::AddBrushToPredefined] no brush\n");
        return false;
    }
    EditorHost* pHost = GetPluginContext()->GetEditorHost();
    std::string strName;
    if (pHost == nullptr || !pHost->PromptText("Set brush name", "Name :", strName))
    {
        return false;
    }
    if (!strName.empty())
    {
        pBrush->SetName(strName.c_str());
    }
    m_BrushContainer.AddBrush(pBrush, strName.empty());
    return true;
}

const char* CBrushLibrary::GetBrushFile()
{
    return PREDEFINED_BRUSHES;
}

bool CBrushLibrary::SaveBrushes()
{
    return SaveBrushesWithCopy(m_BrushContainer, PREDEFINED_BRUSHES);
}
