#pragma once

#include <functional>
#include <string>

class CCommandList;
class CDocumentActions;
class CEditor;
class QMenu;

// The commands about what the level is made of, beside the strokes on its heights. Owned by the
// menus.
class CLevelCommands
{
public:
    // Borrowed. onLevel: the level has another look.
    CLevelCommands(CEditor& editor, CDocumentActions& documents, std::function<void()> onLevel);

    void AddTo(QMenu& menu, CCommandList& commands);

private:
    void FillMaterials(QMenu& menu);
    void DropBitmap();
    void NewBitmap();
    bool IsPainted(const std::string& strPath) const;
    void ShowProperties();

    CEditor& m_Editor;
    CDocumentActions& m_Documents;
    std::function<void()> m_OnLevel;
};
