#pragma once

class ITerrain2DDrawDlgUser;

// The draw dialog as its groups of controls see it.
class IDrawDlg
{
public:
    virtual ~IDrawDlg() = default;
    virtual ITerrain2DDrawDlgUser* GetUser() const = 0; // borrowed, null without one
    // The user for a handler that can do nothing without. Where it is null the controls have been
    // refreshed, which is all that is left to do.
    virtual ITerrain2DDrawDlgUser* NeedUser() = 0;
    // Enables and checks the controls of all groups after the user and the host's mode.
    virtual void UpdateControls() = 0;
};
