#pragma once

#include "tellur/proplist/CPropListCtrl.h"
#include "tellur/proplist/IPropListCtrlUser.h"

class CFormWindow;

// The grid of the panel with the fields of the current brush's function, and the user whom the grid
// asks. A member of the form whose control it binds. The widths of the grid's columns are kept when
// it goes.
class CToolProperties : public IPropListCtrlUser
{
public:
    explicit CToolProperties(CFormWindow& form);
    ~CToolProperties() override;

    // Makes the columns of an empty grid. The control has to be there.
    void Setup();
    // Shows the current brush's function, or nothing.
    void Refresh();
    void Enable(bool bOn);

    // IPropListCtrlUser
    void
    SetFieldValue(CRTTIField* pField, const char* pszText, const PropObjects& objects) override;
    void AddContextMenuItems(CMenu& menu, CRTTIField* pField, int iElement) override;
    const char* GetNoChangeText(const CRTTIObject* pObject) override;
    bool HandleFieldEdit(const PropObjects& objects,
                         CRTTIField* pField,
                         const char* pszValue,
                         int iElement) override;
    bool PickObjects(const CRTTI* pClass, PropObjects& picked) override;
    EngineHost* GetEngineHost() override;
    EditorHost* GetEditorHost() override;
    std::string GetObjectName(const CRTTIObject* pObject, int32_t iId) override;
    void Notify(uint32_t uCommand) override;
    bool QueryFlag() override;

private:
    CPropListCtrl m_Grid;
};
