#pragma once

#include "framework/widgets/CButton.h"
#include "framework/widgets/CComboBox.h"
#include "framework/widgets/CEdit.h"
#include "framework/widgets/CListBox.h"
#include "framework/widgets/CListCtrl.h"
#include "framework/widgets/CSliderCtrl.h"
#include "framework/widgets/CSpinButtonCtrl.h"
#include "tests/framework/widgets/CTestForms.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <string>
#include <vector>

// A form with one control of each kind, ids by kind. Runs at any scale.

enum EControlId : uint32_t
{
    ID_PUSH = 11,
    ID_CHECK,
    ID_THREE,
    ID_TOGGLE,
    ID_DRAWN,
    ID_EDIT,
    ID_NUMBER,
    ID_SLIDER,
    ID_SPIN,
    ID_LIST,
    ID_DROP,
    ID_REPORT,
    ID_AREA,
    ID_NOWHERE = 99, // not in the template
};

const SResourceModule& GetControlsModule();

constexpr uint32_t CONTROLS_FORM = 1;
constexpr uint32_t CONTROLS_DIALOG = 2;

class CControlsForm : public testing::Test
{
protected:
    CControlsForm()
        : m_Form(CONTROLS_FORM)
    {
    }

    // Bind before; shows the form.
    void Open();

    // Notes every notification of a control as "Kind id", the kind counted as in ENotify.
    void Note(ENotify eKind, uint32_t uId, const char* pszName);

    std::vector<std::string> TakeNotes() { return std::exchange(m_Notes, {}); }

    // Device pixels of a length in Qt's units.
    int ToPixels(int iLength) const { return qRound(iLength * m_Form.GetScale()); }

    template <class TWidget = QWidget> TWidget* Find(uint32_t uId)
    {
        return m_Form.Find<TWidget>(uId);
    }

    static void Click(QWidget* pWidget, const QPoint& point = QPoint())
    {
        QTest::mouseClick(pWidget, Qt::LeftButton, Qt::NoModifier, point);
    }

    std::vector<std::string> m_Notes;
    CResourceScope m_Scope{&GetControlsModule()};
    CTestView m_Form;
};

using Notes = std::vector<std::string>;
