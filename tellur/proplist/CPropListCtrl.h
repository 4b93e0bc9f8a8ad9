#pragma once

#include "framework/core/IEditorRegistryObject.h"
#include "framework/drawing/CImageList.h"
#include "framework/widgets/CListCtrl.h"
#include "tellur/proplist/CPropBrowser.h"
#include "tellur/proplist/CPropRowEditing.h"
#include "tellur/proplist/CPropRowMenu.h"
#include "tellur/proplist/CPropRowModel.h"
#include "tellur/proplist/CPropTextHooks.h"
#include "tellur/proplist/IPropRowView.h"

// A grid of names and values: the reflected fields of one or several objects, as a tree of
// categories, fields and their parts. The row under edit has its editors over its value. Knows
// nothing but the reflection; changes go through its user. It is the window of a CPropRowModel:
// what is shown and written stands there, what a person does to a row in the classes beside it.
//
// Objects are borrowed: the owner sets others before they go. Column widths are kept in the
// registry under a key, in pixels at 100 %.
class CPropListCtrl : public CListCtrl, public IEditorRegistryObject, private IPropRowView
{
public:
    void SetUser(IPropListCtrlUser* pUser) { m_Model.SetUser(pUser); } // borrowed

    // Names the key under the current user's hive that keeps the widths; empty: they are not kept.
    // Makes the columns when they are not there yet, so that the key's widths are what the grid
    // starts with.
    void SetRegistryKeyPath(const char* pszPath);
    // The rows are made anew unless the objects are the same, whose values are then shown again.
    void SetObjects(const PropObjects& objects);

    void RefreshValues() { m_Model.RefreshValues(); }

    void SetShowHidden(bool bShow) { m_Model.SetShowHidden(bShow); } // with the edit flag HIDDEN

    void SetHooks(SPropListHooks hooks) { m_Hooks.Set(std::move(hooks)); }

    void SaveToRegistry() override;

    // What IPropListCtrlUser::HandleFieldEdit and PickObjects may hand back: see there. The chooser
    // lists the engine's objects in a menu at the cursor; objects with the STATIC flag are refused
    // with a message.
    bool HandleFieldEdit(const PropObjects& objects,
                         CRTTIField* pField,
                         const char* pszValue,
                         int iElement);
    bool ChooseObjects(const CRTTI* pClass, PropObjects& picked);

    // The objects that the menu is about which was opened last: what the pointers of its row point
    // to, else the edited objects.
    PropObjects GetMenuObjects() const { return m_Menu.GetObjects(); }

protected:
    bool OnNotify(SNotification& notification) override;
    bool OnLButtonDown(const SMouseEvent& event) override;
    bool TranslateKey(const SKeyEvent& key) override;
    bool OnKeyDown(const SKeyEvent& key) override;
    void OnSize() override;

private:
    enum EColumn : int
    {
        NAME_COLUMN,
        VALUE_COLUMN,
    };

    // IPropRowView
    void OnRowsMade() override;
    void OnValueRead(SPropRow& row, const CPropInPlaceCtrl* pSender) override;

    void CreateColumns();
    void CreateImages();
    void ShowRows();
    void ShowRow(const SPropRow& row, bool bTree); // bTree: some rows have a picture
    void Toggle(SPropRow& row, bool bOpen);
    void OpenMenu(SPropRow& row, SScreenPoint at);

    std::string m_KeyPath;
    CImageList m_Images;
    CPropTextHooks m_Hooks;
    CPropRowModel m_Model{*this};
    CPropBrowser m_Browser{m_Model};
    CPropRowMenu m_Menu{m_Model};
    CPropRowEditing m_Editing{{*this, m_Model, m_Browser, m_Hooks}, VALUE_COLUMN};
};
