#pragma once

#include "framework/core/Cursor.h"
#include "host/IPaintLayer.h"
#include "host/Image.h"
#include "tellur/modes/CModeBase.h"
#include "tellur/painting/CTellur2DDrawUndoManager.h"
#include "tellur/painting/ITerrain2DDrawDlgUser.h"

#include <memory>
#include <string>
#include <vector>

class CTellur2DFunction;

// Paints the terrain-type bitmap: loads the file that the draw dialog names, paints squares around
// the cursor with the current function through the host's paint layer, keeps the result between
// activations, saves it. Lengths are terrain units.
class CModeEditTerrainType : public CModeBase, public ITerrain2DDrawDlgUser
{
public:
    CModeEditTerrainType();
    ~CModeEditTerrainType() override;

    // IEditorMode
    // The same text as the terraforming mode's; hosts have always seen it so.
    const char* GetName() const override { return "ModeTerraforming"; }

    bool IsAvailable() override { return true; }

    bool CanDeactivate() override { return true; }

    bool SetCursor() override;
    void Activate() override;
    void Deactivate() override;
    void Suspend(bool bSuspended) override;
    void OnLButtonDown(ViewId view, ViewPoint point, uint32_t uFlags) override;
    void OnMouseMove(ViewId view,
                     uint32_t uFlags,
                     ViewPoint point,
                     uintptr_t uExtra1,
                     uintptr_t uExtra2) override;
    void OnLButtonUp(ViewId view, ViewPoint point, uint32_t uFlags) override;

    void Render() override {} // the paint layer shows everything

    // ITerrain2DDrawDlgUser
    const char* GetBrushShapeName() const override { return m_BrushShapePath.c_str(); }

    void SetBrushShape(const IImage* pImage, const char* pszPath) override;
    void SetFunction(const char* pszName) override;
    const char* GetFunctionName() const override;

    const IPalette* GetPalette() const override { return m_Palette.get(); }

    uint32_t GetChannelMask() const override { return m_Channels; }

    void SetChannelMask(uint32_t uChannels) override;

    float GetPower() const override { return m_Power; }

    void SetPower(float fPower) override { m_Power = fPower; }

    float GetHardness() const override { return m_Hardness; }

    void SetHardness(float fHardness) override { m_Hardness = fHardness; }

    const char* GetPaintMaterial() const override;
    void SetPaintMaterial(const char* pszName) override;
    void SetTexelMapping(bool bVertices) override;
    ETexelMapping GetTexelMapping() const override;
    void GetMappingSizes(float* pLength, uint32_t* pWidth) const override;
    void SetColor(const float* pColor) override;
    void Undo() override;
    void Redo() override;

    // Owned by the mode from the call on when it is taken: false for null and for a name that is
    // there already.
    bool AddFunction(std::unique_ptr<CTellur2DFunction>& pFunction);

    // Writes the bitmap as it is painted now, paletted when its file was. False for an empty path,
    // without a bitmap and, with a logged line, when it cannot be written.
    bool SaveBitmap(const char* pszPath);

    // Brings the depth of undo to the plug-in's setting, 1 at least.
    void ApplyUndoDepth();

    const IImage* GetBrushShape() const { return m_BrushShape.get(); } // null for none

    float* GetBrushHalfSize() { return &m_HalfSize; } // the dialog writes it directly

    bool HasBitmap() const { return m_WorkImage != nullptr; }

    // Whether strokes, or what undid them, are not in the bitmap's file yet.
    bool IsUnsaved() const { return m_bUnsaved; }

    // A number that grows with every change of the texels.
    uint64_t GetRevision() const { return m_Revision; }

    const IImage* GetWorkImage() const { return m_WorkImage.get(); } // null for none

    // Takes the bitmap of a file with texels of 32 bits that were painted on it and never saved.
    // Not to be called while this mode is current. Texels of another size than the file's, and a
    // file that cannot be read, give a bitmap without a palette.
    void RestoreBitmap(const std::string& strPath, const IImage& texels);

    // The file whose bitmap is loaded, as the dialog had it; empty before the first one.
    const std::string& GetBitmapPath() const { return m_BitmapPath; }

    // How many strokes Undo would still take back.
    uint32_t GetUndoPosition() const { return m_Undo->GetPosition(); }

private:
    bool IsCurrent() const;
    void LoadBitmap(const std::string& strPath);
    void TakeLayerImage();
    bool Pick(ViewId view, ViewPoint point, SExtents& box) const;
    void Paint(const SExtents& box);
    void ReloadTexture();
    void Step(bool (ITellur2DDrawUndoManager::*pStep)(IImage*));

    CursorHandle m_Cursor;
    std::string m_BitmapPath;
    EImageFormat m_BitmapFormat = EImageFormat::Unknown;
    std::unique_ptr<IImage> m_WorkImage; // 32 bits a texel
    std::unique_ptr<IPalette> m_Palette;
    std::unique_ptr<IImage> m_BrushShape;
    std::string m_BrushShapePath;
    float m_Power = 1.0F;
    bool m_bPainting = false;
    bool m_bUnsaved = false;
    uint64_t m_Revision = 0;
    float m_HalfSize = 500.0F;
    float m_Hardness = 0.0F;
    std::vector<std::unique_ptr<CTellur2DFunction>> m_Functions; // unique by name
    CTellur2DFunction* m_Function = nullptr;                     // one of them
    uint32_t m_Channels = 0;
    std::unique_ptr<CTellur2DDrawUndoManager> m_Undo;
};
