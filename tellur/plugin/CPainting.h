#pragma once

#include "host/IPluginPainting.h"

#include <cstdint>
#include <memory>
#include <string>

class CModeEditTerrainType;
class CPluginModes;
class CTCPARSE_KEYWORD;
class CTerrain2DDrawDlg;

namespace fs
{
class ifile;
}

// The draw dialog with the mode that it works, the bitmap that is painted, and the one persistent
// setting, the depth of painting's undo.
class CPainting : public IPluginPainting
{
public:
    explicit CPainting(const CPluginModes& modes); // borrowed
    ~CPainting() override;

    // Makes the dialog at the first call and shows it. False when it cannot be shown.
    bool OpenDialog();

    CTerrain2DDrawDlg* GetDialog() const { return m_p2DDrawDlg.get(); } // null before the first

    void DestroyDialog();

    CModeEditTerrainType* GetMode() const; // the host's; null before it is registered
    // Whether the mode is current, has a bitmap and is worked by the dialog.
    bool IsOn() const;
    // Makes the mode current, by the dialog's button where there is a dialog. strWhy: one line when
    // it fails.
    bool SwitchOn(std::string& strWhy);

    // The setting: strokes, 10 as long as nobody says otherwise.
    void RegisterSetting();

    int32_t GetUndoDepth() const { return m_2DDrawUndoMgrStackSize; }

    void ResetSetting();
    void SaveSetting(fs::ifile& file) const;
    void LoadSetting(const CTCPARSE_KEYWORD* pFirst);

    // IPluginPainting
    const IImage* GetBitmap() override;
    uint64_t GetBitmapRevision() override;
    std::string GetBitmapFile() override;
    std::string GetUnsavedBitmap() override;
    std::string GetUnreadBitmap() override;
    bool WouldDropPainting(int32_t iModeId) override;
    bool SaveBitmap(const char* pszPath) override;
    bool StepPaint(bool bRedo) override;

private:
    const CPluginModes& m_Modes;
    std::unique_ptr<CTerrain2DDrawDlg> m_p2DDrawDlg;
    int32_t m_2DDrawUndoMgrStackSize;
};
