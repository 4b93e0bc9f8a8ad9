#pragma once

#include <cstdint>
#include <string>
#include <vector>

class CMenu;
class CRTTI;
class CRTTIField;
class CRTTIObject;
class EditorHost;
class EngineHost;

using PropObjects = std::vector<CRTTIObject*>;

// What a property list asks of its owner; it reaches the editor only through this. The list borrows
// it. Objects, fields and texts are borrowed for the call. It is called on the UI thread.
class IPropListCtrlUser
{
public:
    virtual ~IPropListCtrlUser() = default;

    // Writes the text into the field of each object. The list changes objects in no other way. It
    // shows afterwards what they hold then, so a refusal needs no answer.
    virtual void
    SetFieldValue(CRTTIField* pField, const char* pszText, const PropObjects& objects) = 0;
    // Adds items of the user's own to the menu of a row, with ids from PROP_COMMAND_USER on; a
    // chosen one comes back through Notify. iElement: as in SPropRow.
    virtual void AddContextMenuItems(CMenu& menu, CRTTIField* pField, int iElement) = 0;
    // The text that stands for "leave the value as it is".
    virtual const char* GetNoChangeText(const CRTTIObject* pObject) = 0;
    // Reads the text, brings it inside the field's limits and writes it to the objects. False when
    // any of them did not take it. iElement: the part of the field that the text is for, as in
    // SPropRow; -1: the text is the whole field's.
    virtual bool HandleFieldEdit(const PropObjects& objects,
                                 CRTTIField* pField,
                                 const char* pszValue,
                                 int iElement) = 0;
    // Lets the person choose objects whose class derives from pClass. False when the person
    // cancels.
    virtual bool PickObjects(const CRTTI* pClass, PropObjects& picked) = 0;
    virtual EngineHost* GetEngineHost() = 0; // null: there are no objects and no text macros
    virtual EditorHost* GetEditorHost() = 0; // null: nothing can be browsed for
    virtual std::string GetObjectName(const CRTTIObject* pObject, int32_t iId) = 0;
    // A command of the menu that the list cannot carry out itself was chosen: EPropCommand, or one
    // of the user's own. CPropListCtrl::GetMenuObjects tells whom it is about.
    virtual void Notify(uint32_t uCommand) = 0;
    // Whether it carries out the commands on objects (select, make public, delete). The list offers
    // none of them otherwise.
    virtual bool QueryFlag() = 0;
};

// Of the menu of a row.
enum EPropCommand : uint32_t
{
    PROP_COMMAND_REMOVE = 0x402,
    PROP_COMMAND_SELECT = 0x403,
    PROP_COMMAND_SELECT_CHAIN = 0x404,
    PROP_COMMAND_MAKE_PUBLIC = 0x405,
    PROP_COMMAND_COPY = 0x406,
    PROP_COMMAND_PASTE = 0x407,
    PROP_COMMAND_DELETE = 0x408,
    PROP_COMMAND_USER = 0x500,
};
