#pragma once

#include "host/Export.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// A toolbar as data: its buttons with their commands, images and states. A window that shows it
// follows through the change listener. Buttons are addressed by position from 0 or by command id
// (the first one that has it).
class TELLUR_API CToolBar
{
public:
    using FOnChange = std::function<void()>;

    CToolBar() = default;
    virtual ~CToolBar() = default;
    CToolBar(const CToolBar&) = delete;
    CToolBar& operator=(const CToolBar&) = delete;

    // Replaces the buttons by those of a resource. Answers false and keeps them when no module has
    // a toolbar of that id.
    bool LoadToolBar(uint32_t uResourceId);

    // Both answer false when there is no such button; what GetButtonInfo would fill in then stays.
    bool GetButtonInfo(size_t iButton, uint32_t& uId, uint32_t& uStyle, int& iImage) const;
    bool SetButtonInfo(size_t iButton, uint32_t uId, uint32_t uStyle, int iImage);
    void SetWindowText(const char* pszText); // copied; null is empty

    // Both set a state and answer false when no button has the command.
    bool PressButton(uint32_t uId, bool bPressed);
    bool CheckButton(uint32_t uId, bool bChecked);

    bool IsButtonPressed(uint32_t uId) const;
    bool IsButtonChecked(uint32_t uId) const;

    size_t GetButtonCount() const { return m_Buttons.size(); }

    const std::string& GetWindowText() const { return m_WindowText; }

    uint32_t GetBitmapId() const { return m_BitmapId; } // 0 until it is loaded

    int GetButtonWidth() const { return m_ButtonWidth; } // pixels of one image

    int GetButtonHeight() const { return m_ButtonHeight; }

    // Called after every change of buttons, states or text. Whoever sets it takes it off again
    // (with an empty function) before it ends.
    void SetChangeListener(FOnChange onChange) { m_OnChange = std::move(onChange); }

private:
    struct SButton
    {
        uint32_t uId = 0;
        uint32_t uStyle = 0;
        int iImage = 0;
        bool bPressed = false;
        bool bChecked = false;
    };

    const SButton* FindButton(uint32_t uId) const;
    bool SetState(uint32_t uId, bool SButton::*pState, bool bValue);
    void Changed() const;

    std::vector<SButton> m_Buttons;
    std::string m_WindowText;
    uint32_t m_BitmapId = 0;
    int m_ButtonWidth = 0;
    int m_ButtonHeight = 0;
    FOnChange m_OnChange;
};
