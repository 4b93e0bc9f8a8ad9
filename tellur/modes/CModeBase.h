#pragma once

#include "host/IEditorMode.h"

// The cross of modes that take points of the ground and have no brush with a cursor of its own.
constexpr uint32_t CROSS_CURSOR_ID = 2113;

// What the plug-in's modes share: ids that the host keeps in them, and keyboard navigation of the
// camera. Modes are made by the plug-in object and owned by the host's mode manager once
// registered.
class CModeBase : public IEditorMode
{
public:
    void SetId(uint32_t uId) override { m_Id = uId; }

    uint32_t GetId() const override { return m_Id; }

    uint32_t GetUserData() const override { return m_UserData; }

    void SetUserData(uint32_t uData) override { m_UserData = uData; }

    // Camera navigation by held keys and by the view actions 108 to 121.
    void OnAction(ViewId view, int iAction, uint32_t uCount) override;

    void Notify(uintptr_t, uintptr_t, uintptr_t) override {}

private:
    uint32_t m_Id = 0;
    uint32_t m_UserData = 0;
};

// Says the mode's caption, has the window system send cursor and move messages again without the
// user moving the mouse, and refreshes the active view. What each mode does when it gets the input.
void TakeInput(const char* pszCaption);
