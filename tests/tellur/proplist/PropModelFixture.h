#pragma once

#include "framework/widgets/CListCtrl.h"
#include "tellur/proplist/CPropBrowser.h"
#include "tellur/proplist/CPropRowMenu.h"
#include "tellur/proplist/CPropRowModel.h"
#include "tellur/proplist/CPropTextHooks.h"
#include "tellur/proplist/IPropRowView.h"
#include "tellur/proplist/SPropEditorContext.h"
#include "tests/tellur/proplist/PropTestObjects.h"

// A model of rows with its menu and its browser; being its view, the test writes down what is told.
class CPropModelTest : public CPropThingsTest, private IPropRowView
{
protected:
    CPropModelTest()
    {
        m_User.onEdit = std::bind_front(&CPropRowModel::HandleFieldEdit, &m_Model);
        m_User.onPick = std::bind_front(&CPropBrowser::ChooseObjects, &m_Browser);
        m_Model.SetUser(&m_User);
    }

    SPropRow* FindRow(const std::string& strName) // null: not shown
    {
        for (int i = 0; SPropRow* pRow = m_Model.GetShown(i); ++i)
        {
            if (pRow->strName == strName)
            {
                return pRow;
            }
        }
        return nullptr;
    }

    SPropRow& Row(const std::string& strName)
    {
        SPropRow* pRow = FindRow(strName);
        EXPECT_NE(pRow, nullptr) << strName;
        return pRow != nullptr ? *pRow : *m_Model.GetRows().front();
    }

    std::string Value(const std::string& strName)
    {
        const SPropRow* pRow = FindRow(strName);
        return pRow != nullptr ? m_Model.GetShownText(*pRow) : "no such row";
    }

    std::string GetTexts() const // of what is shown
    {
        std::string strTexts;
        for (int i = 0; const SPropRow* pRow = m_Model.GetShown(i); ++i)
        {
            strTexts += pRow->strName + "=" + m_Model.GetShownText(*pRow) + "|";
        }
        return strTexts;
    }

    void Set(const std::string& strName, const std::string& strText)
    {
        m_Told.clear();
        m_Model.SetValue(Row(strName), strText, nullptr);
    }

    void OnRowsMade() override { m_Told += "rows|"; }

    void OnValueRead(SPropRow& row, const CPropInPlaceCtrl*) override
    {
        m_Told += row.strName + "|";
    }

    std::string m_Told; // "rows", and the name of each row whose value was read
    CPropTextHooks m_Hooks;
    CPropRowModel m_Model{*this};
    CPropBrowser m_Browser{m_Model};
    CPropRowMenu m_Menu{m_Model};
    CListCtrl m_NoWindow;
    SPropEditorContext m_Context{m_NoWindow, m_Model, m_Browser, m_Hooks};
};
