#pragma once

#include "framework/widgets/CWindow.h"

#include <functional>
#include <map>
#include <string>
#include <variant>
#include <vector>

// A window made from a dialog template: its controls, the objects and variables bound to them, and
// the handlers of their notifications, all by control id. An id that the template lacks is no
// error: its variable keeps its value and its handler is never called.
//
// A form with many controls is made of groups: members of its class that get the form, bind the
// controls that go together, and handle what these notify.
class TELLUR_API CFormWindow : public CWindow
{
public:
    using FHandler = std::function<void()>;
    using FNotifyHandler = std::function<void(SNotification&)>;

    ~CFormWindow() override;

    // These bind an object or a variable to a control, and are to be called before the window is
    // made. Object and variable must outlive the window.
    void Bind(uint32_t uId, CWindow& control);
    void BindValue(uint32_t uId, float& fValue); // its edit takes the keys of numbers alone
    void BindText(uint32_t uId, std::string& strText);
    void BindCheck(uint32_t uId, int& iState);
    // A later handler of the same kind and id replaces the one before.
    void On(ENotify eKind, uint32_t uId, FNotifyHandler onNotify);
    void OnClick(uint32_t uId, FHandler onClick);
    void OnTextChange(uint32_t uId, FHandler onChange);
    // As OnTextChange, except that what WriteControls writes is no edit.
    void OnEdit(uint32_t uId, FHandler onEdit);
    void OnSelectionChange(uint32_t uId, FHandler onChange);
    // Sets the handler of all sliders of the form, which then takes the place of those of single
    // sliders.
    void OnScroll(FNotifyHandler onScroll);

    // Every variable takes what its control shows, unless that cannot be read: then it stays.
    void ReadControls();
    // Every control shows its variable. A text that reads as the value already is left as it is,
    // and so is one under the keyboard's focus that is no value yet as long as the variable stays
    // the same: writing back does not disturb who types. When the focus leaves such a text, its
    // variable is shown again. uOnly: the one control that is meant; 0: all.
    void WriteControls(uint32_t uOnly = 0);

    // These work on one control. Where the template lacks its id nothing happens and answers are
    // empty.
    void SetItemText(uint32_t uId, const char* pszText);
    std::string GetItemText(uint32_t uId) const;
    void EnableItem(uint32_t uId, bool bEnable);
    bool IsItemEnabled(uint32_t uId) const;
    void CheckItem(uint32_t uId, int iState); // 0, 1, or 2: undetermined
    int GetItemCheck(uint32_t uId) const;
    // Clicks a button. Answers false when the template lacks it and while it is disabled.
    bool PressItem(uint32_t uId);
    SRect GetItemRect(uint32_t uId) const; // in the form's client area

protected:
    explicit CFormWindow(uint32_t uTemplateId);

    bool OnChildNotify(SNotification& notification) override;

    // Finds the template in the resource modules. Answers null, with one logged line, when there is
    // none and when the program shows no windows (a window system that cannot be opened is logged
    // the first time only).
    const SDialogResource* FindTemplate() const;

    // Called once the controls are there, before the window is shown.
    virtual void OnInit() {}

    // Gives a control of the template to the object that is bound to its id.
    void AttachControls();

private:
    friend class CFormBuilder;

    using Variable = std::variant<float*, std::string*, int*>;

    struct SBoundVariable
    {
        uint32_t uId = 0;
        Variable pVariable;
        float fShown = 0.0F; // a float's value when it was read or written last
    };

    IWindowNode* FindItem(uint32_t uId) const;
    bool NeedsText(const SBoundVariable& bound, const IWindowNode& node) const;
    void ShowAgain(uint32_t uId);

    uint32_t m_TemplateId;
    std::map<uint32_t, CWindow*> m_Objects;
    std::vector<SBoundVariable> m_Variables; // in the order of binding
    std::map<std::pair<ENotify, uint32_t>, FNotifyHandler> m_Handlers;
    FNotifyHandler m_OnScroll;
    std::map<uint32_t, IWindowNode*> m_Items; // the template's controls
    bool m_bWriting = false;                  // texts change by WriteControls
};
