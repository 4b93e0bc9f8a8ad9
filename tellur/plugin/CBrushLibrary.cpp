#include "tellur/plugin/CBrushLibrary.h"

#include "host/EditorHost.h"
#include "host/Image.h"
#include "host/Log.h"
#include "host/Reflection.h"
#include "tellur/brushes/BrushFaults.h"
#include "tellur/brushes/BrushFileCopy.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/functions/CTellurBaseFunction.h"
#include "tellur/panel/SaveBrushes.h"
#include "tellur/plugin/BrushText.h"
#include "tellur/resources/FunctionFaces.h"
#include "tellur/stroke/ITellurFunction.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace
{

constexpr std::string_view SUFFIX = "Function";
constexpr const char* TOOL_BRUSH_IMAGE = ".\\data\\brushes\\round.png";

// The class of that name that is one of this library's: another plug-in of the process may have one
// of the same name.
const CRTTI* FindFunctionClass(const std::string& strName)
{
    for (const CRTTI* pClass : CRTTI::GetClasses())
    {
        if (strName == pClass->GetClassNameA() &&
            pClass->IsDerivedFrom(&CTellurBaseFunction::s_RTTI))
        {
            return pClass;
        }
    }
    return nullptr;
}

} // namespace

// The class of each function that has a face makes one; its name in the reflection is that in files
// behind a "C".
void CBrushLibrary::CreateFunctions()
{
    for (const SFunctionFace& face : GetFunctionFaces())
    {
        const CRTTI* pClass = FindFunctionClass(std::string("C") + face.pszFunction);
        CRTTIObject* pObject = pClass != nullptr ? pClass->Create() : nullptr;
        if (!m_FunctionContainer.AddFunction(dynamic_cast<ITellurFunction*>(pObject)))
        {
            const std::string_view strName = face.pszFunction;
            CrashLog("[IPluginImpl::InitializeFunctionsAndBrushes] cannot add %s function\n",
                     std::string(strName.substr(0, strName.rfind(SUFFIX))).c_str());
            delete pObject;
        }
    }
}

void CBrushLibrary::InitializeFunctionsAndBrushes()
{
    CreateFunctions();
    for (const auto& pFunction : m_FunctionContainer.GetFunctions())
    {
        std::unique_ptr<ITellurFunction> pInstance(pFunction->Clone());
        // CreateBrush takes the function only where it makes a brush.
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

std::vector<SDefinedBrush> CBrushLibrary::GetDefinedBrushes()
{
    std::vector<SDefinedBrush> brushes;
    for (const auto& pBrush : m_BrushContainer.GetPredefined())
    {
        const char* pszName = pBrush->GetName();
        const char* pszImage = pBrush->GetBitmapPath();
        const IImage* pImage = std::as_const(*pBrush).GetBitmapImage();
        SDefinedBrush shown = {.strName = pszName != nullptr ? pszName : "",
                               .strFunction = GetToolName(pBrush.get()),
                               .strImage = pszImage != nullptr ? pszImage : "",
                               .fExtent = pBrush->GetExtent()};
        if (pImage != nullptr && pImage->GetRawData() != nullptr)
        {
            shown.pPixels = pImage->GetRawData();
            shown.uSide = pImage->GetWidth(); // brushes have square ones of a byte a pixel
        }
        brushes.push_back(std::move(shown));
    }
    return brushes;
}

void CBrushLibrary::ClearBrushes()
{
    m_Changes.Clear();
    m_BrushContainer.Clear();
}

bool CBrushLibrary::SaveBrushes()
{
    return SaveBrushesWithCopy(m_BrushContainer, PREDEFINED_BRUSHES);
}

void CBrushLibrary::TellTaken(const CTellurBrush& brush, const CTellurBrush* pCopy)
{
    m_pTaken = &brush;
    m_pTakenCopy = pCopy;
    // A brush without a function is no tool's, and to ask for its name would be logged.
    if (m_pTaker != nullptr && brush.GetRTTIObject() != nullptr)
    {
        m_pTaker->OnBrushTaken(brush.GetName() != nullptr ? brush.GetName() : "",
                               brush.GetFunctionName());
    }
}

int32_t CBrushLibrary::FindTaken(const CTellurBrush* pCopy) const
{
    const auto& brushes = m_BrushContainer.GetPredefined();
    const auto taken =
        std::find_if(brushes.begin(),
                     brushes.end(),
                     [this](const auto& pBrush) { return pBrush.get() == m_pTaken; });
    const bool bThere = pCopy != nullptr && pCopy == m_pTakenCopy && taken != brushes.end();
    return bThere ? static_cast<int32_t>(taken - brushes.begin()) : -1;
}

bool CBrushLibrary::WriteToolBrush(fs::ifile& file, const char* pszFunction)
{
    const CTellurBrush* pBrush = m_BrushContainer.FindBrush(pszFunction);
    const bool bReadsBack = pBrush != nullptr && pBrush->GetBitmapPath() != nullptr &&
                            !BreaksBrushFile(pBrush->GetBitmapPath()) &&
                            !BreaksBrushFile(pBrush->GetMaskPath().c_str());
    return bReadsBack && WriteBrush(file, *pBrush, TOOL_BRUSH_KEYWORD);
}
