#pragma once

#include "framework/core/IEditorRegistryObject.h"
#include "framework/drawing/CImageList.h"
#include "framework/widgets/CListCtrl.h"
#include "tellur/proplist/SPropRow.h"

#include <functional>
#include <optional>
#include <set>

class CMenu;

// How an owner may change what editors show and take; an empty function leaves it to the editors.
struct SPropListHooks
{
    std::function<std::string(const CRTTIField&, const std::string&)> format; // value to shown text
    std::function<std::string(const CRTTIField&, const std::string&)> parse;  // typed text to value
    std::function<bool(const CRTTIField&)> mayEdit;
};

// A grid of names and values: the reflected fields of one or several objects, as a tree of
// categories, fields and their parts. The row under edit has its editors over its value. Knows
// nothing but the reflection; changes go through its user.
//
// Objects are borrowed: the owner sets others before they go. Column widths are kept in the
// registry under a key, in pixels at 100 %.
class CPropListCtrl : public CListCtrl, public IEditorRegistryObject
{
public:
    CPropListCtrl();
    ~CPropListCtrl() override;

    void SetUser(IPropListCtrlUser* pUser) { m_pUser = pUser; } // borrowed

    IPropListCtrlUser* GetUser() const { return m_pUser; }

    // Under the current user's hive; empty: widths are not kept. Makes the columns when they are
    // not there yet, so that the key's widths are what the grid starts with.
    void SetRegistryKeyPath(const char* pszPath);
    // The rows are made anew unless the objects are the same, whose values are then shown again.
    void SetObjects(const PropObjects& objects);
    void RefreshValues();
    void SetShowHidden(bool bShow); // fields with the edit flag HIDDEN

    void SetHooks(SPropListHooks hooks) { m_Hooks = std::move(hooks); }

    void SaveToRegistry() override;

    // What IPropListCtrlUser::HandleFieldEdit and PickObjects may hand back: see there. The chooser
    // lists the engine's objects in a menu at the cursor; objects with the STATIC flag are refused
    // with a message.
    bool HandleFieldEdit(const PropObjects& objects,
                         CRTTIField* pField,
                         const char* pszValue,
                         int iElement);
    bool ChooseObjects(const CRTTI* pClass, PropObjects& picked);

    // Of the row whose menu was opened last: what its pointers point to, else the edited objects.
    PropObjects GetMenuObjects() const;

    // For the editors. pszText: null is ignored. pSender: the editor the value comes from.
    void ApplyValue(SPropRow& row, const char* pszText, const CPropInPlaceCtrl* pSender);
    void Browse(SPropRow& row, uint32_t uKind, bool bShift, CPropInPlaceCtrl& sender);
    std::string ParseText(const SPropRow& row, const std::string& strTyped) const;
    std::string FormatText(const SPropRow& row, const std::string& strText) const;
    // The text of a number that a spinner counts to; empty: as the spinner writes it.
    std::string FormatNumber(const SPropRow& row, double fValue) const;
    bool MayEdit(const SPropRow& row) const;

protected:
    bool OnNotify(SNotification& notification) override;
    bool OnLButtonDown(const SMouseEvent& event) override;
    bool TranslateKey(const SKeyEvent& key) override;
    bool OnKeyDown(const SKeyEvent& key) override;
    void OnSize() override;

private:
    using Rows = std::vector<std::unique_ptr<SPropRow>>;

    enum EColumn : int
    {
        NAME_COLUMN,
        VALUE_COLUMN,
    };

    struct SCopied
    {
        const CRTTIField* pField = nullptr; // null: nothing was copied
        int iElement = -1;
        std::string strText;
        std::vector<int32_t> pointed; // identifiers, of a pointer field
    };

    // columns, pictures and the list view's rows
    void CreateColumns();
    void CreateImages();
    void ShowRows();
    void ShowRow(const SPropRow& row, bool bTree); // bTree: some rows have a picture
    SPropRow* GetRowOf(int iItem) const;           // null when there is none
    void Toggle(SPropRow& row, bool bOpen);

    // the tree of rows
    void BuildRows();
    void AddFields(const PropObjects& objects, int iDepth, const std::string& strKey);
    void
    AddField(CRTTIField& field, const PropObjects& objects, int iDepth, const std::string& strKey);
    void AddParts(SPropRow& row, int nParts);
    void AddPointed(SPropRow& row);
    SPropRow& AddRow(CRTTIField* pField, int iElement, const PropObjects& objects);
    std::string GetPartName(const CRTTIField& field, int iPart, const PropObjects& objects) const;
    bool IsShown(const CRTTIField& field) const;
    bool IsTreeStale() const; // pointers point elsewhere than when the rows were made
    void Rebuild();
    SPropRow* FindRow(const std::string& strKey) const;

    // values
    void ReadRow(SPropRow& row) const;
    std::string GetShownText(const SPropRow& row) const;
    void RefreshRow(SPropRow& row, const CPropInPlaceCtrl* pSender);
    void WriteValue(const SPropRow& row, const std::string& strText);
    bool WriteOne(CRTTIObject& object, CRTTIField& field, const std::string& strText, int iElement);

    // editing
    void BeginEdit(SPropRow* pRow);
    void EndEdit();
    void ChooseEditors(SPropRow& row);
    void PlaceEditors(const SPropRow& row);
    void FocusRow(SPropRow& row, bool bLast);
    bool MoveEditing(bool bBack);
    template <class TEditor> void EnsureEditor(SPropRow& row, EPropEditor eSlot);

    // menu and objects
    void OpenMenu(int iItem, SScreenPoint at);
    void FillMenu(CMenu& menu, const SPropRow& row);
    void RunCommand(SPropRow& row, uint32_t uCommand);
    void CopyAttribute(const SPropRow& row);
    bool CanPaste(const SPropRow& row) const;
    void PasteAttribute(SPropRow& row);
    std::string BrowsePath(const SPropRow& row, uint32_t uKind) const;
    void PickObject(SPropRow& row);
    void ClearValue(SPropRow& row);
    void AssignObject(SPropRow& row, const CRTTIObject& object);
    void OfferList(CMenu& menu,
                   const SPropRow& row,
                   const CRTTIObject& object,
                   std::vector<std::string>& results) const;

    IPropListCtrlUser* m_pUser = nullptr;
    std::string m_KeyPath;
    PropObjects m_Objects;
    std::vector<const CRTTI*> m_Classes; // theirs, when the rows were made
    SPropListHooks m_Hooks;
    Rows m_Rows; // the whole tree, parents before their children
    Rows m_Dead; // with editors that may not have finished yet; until the next choice of a row
    std::vector<SPropRow*> m_Shown;
    std::set<std::string> m_Toggled; // keys of rows that a person opened or closed
    CImageList m_Images;
    SPropRow* m_pEdited = nullptr;
    std::string m_MenuKey;
    SCopied m_Copied;
    std::set<const CRTTIObject*> m_Path; // of pointers while the tree is made, against circles
    uint32_t m_NextEditorId = 1;
    int m_iWritten = -1; // the element that is being written, which SetFieldValue does not tell
    int m_nApplying = 0;
    bool m_bRebuildLater = false; // after the value that is being applied
    bool m_bRefreshLater = false;
    bool m_bShowHidden = false;
};
