#pragma once

#include "framework/core/ResourceModule.h"
#include "tellur/proplist/CPropListCtrl.h"
#include "tests/framework/widgets/CTestForms.h"
#include "tests/support/CTempFolder.h"
#include "tests/tellur/proplist/PropTestObjects.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

// A property list in a form of its own, with real editors and a window system that answers as the
// test says.
class CPropListTest : public CPropThingsTest
{
protected:
    static constexpr uint32_t GRID = 21;

    CPropListTest();
    ~CPropListTest() override;

    // pszEdit: the row whose value is then clicked, null for none.
    void Show(const PropObjects& objects, const char* pszEdit = nullptr);

    QTreeView* View() { return m_Form.Find<QTreeView>(GRID); }

    int FindRow(const std::string& strName); // -1: not shown

    std::string Value(const std::string& strName)
    {
        return m_List.GetCellText(FindRow(strName), 1);
    }

    QPoint At(const std::string& strName, int iColumn = 1); // in the viewport
    void Edit(const std::string& strName);                  // clicks on its value

    // The visible in-place editor of that kind; null when the row has none.
    template <class TWidget> TWidget* Editor()
    {
        for (TWidget* pWidget : View()->viewport()->findChildren<TWidget*>())
        {
            if (pWidget->isVisible())
            {
                return pWidget;
            }
        }
        return nullptr;
    }

    void Type(const char* pszText); // into the edit box under edit, in place of its text

    void Enter(const char* pszText)
    {
        ASSERT_NO_FATAL_FAILURE(Type(pszText));
        QTest::keyClick(Editor<QLineEdit>(), Qt::Key_Return);
    }

    std::string Typed() { return Editor<QLineEdit>()->text().toStdString(); }

    CTempFolder m_Folder;
    CResourceScope m_Scope;
    CTestView m_Form;
    CPropListCtrl m_List;
};
