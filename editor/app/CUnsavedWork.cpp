#include "editor/app/CUnsavedWork.h"

#include "editor/app/CDocumentQuestions.h"
#include "editor/app/CEditor.h"
#include "editor/app/CEditorFace.h"
#include "editor/core/Words.h"
#include "host/IPluginBrushes.h"
#include "host/IPluginPainting.h"
#include "host/Log.h"

CUnsavedWork::CUnsavedWork(CEditor& editor, const CEditorFace& face, CDocumentQuestions& questions)
    : m_Editor(editor)
    , m_Face(face)
    , m_Questions(questions)
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

// A bitmap is another thing: the old one would be gone, and the strokes may be a try.
void CUnsavedWork::Leave()
{
    auto* pBrushes = m_Editor.FindInterface<IPluginBrushes>();
    if (pBrushes != nullptr && pBrushes->HasUnsavedBrushes())
    {
        pBrushes->SaveBrushes();
    }
}

bool CUnsavedWork::MayActivate(int32_t iModeId)
{
    auto* pPainting = m_Editor.FindInterface<IPluginPainting>();
    // A script is played without questions.
    return pPainting == nullptr || m_Face.IsScriptPlayed() ||
           !pPainting->WouldDropPainting(iModeId) || MayDropPainting();
}

void CUnsavedWork::OnActivated(int32_t /*iModeId*/)
{
    auto* pPainting = m_Editor.FindInterface<IPluginPainting>();
    const std::string strBitmap =
        pPainting != nullptr ? pPainting->GetUnreadBitmap() : std::string();
    if (!strBitmap.empty())
    {
        CrashLog("[CUnsavedWork::OnActivated] %s could not be read, nothing can be painted: it is "
                 "read again when Edit is switched on with another bitmap and then with this one\n",
                 strBitmap.c_str());
    }
}

bool CUnsavedWork::MayDropPainting()
{
    auto* pPainting = m_Editor.FindInterface<IPluginPainting>();
    const std::string strFile =
        pPainting != nullptr ? pPainting->GetUnsavedBitmap() : std::string();
    return strFile.empty() ||
           m_Questions.MayDrop(QString::fromStdString(strFile),
                               Words("The bitmap cannot be saved."),
                               [&] { return pPainting->SaveBitmap(strFile.c_str()); });
}

bool CUnsavedWork::MayDropBrushes()
{
    auto* pBrushes = m_Editor.FindInterface<IPluginBrushes>();
    return pBrushes == nullptr || !pBrushes->HasUnsavedBrushes() ||
           m_Questions.MayDrop(Words("the defined brushes"),
                               Words("The brushes cannot be saved."),
                               [pBrushes] { return pBrushes->SaveBrushes(); });
}
