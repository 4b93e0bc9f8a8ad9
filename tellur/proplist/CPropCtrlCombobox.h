#pragma once

#include "framework/widgets/CComboBox.h"
#include "tellur/proplist/CPropInPlaceCtrl.h"

// A list of texts to choose from, filled when the row is edited first. While the objects have
// different values that is an item of its own, which changes nothing when it is chosen.
class CPropCtrlComboboxBase : public CComboBox, public CPropInPlaceCtrl
{
public:
    using CPropInPlaceCtrl::CPropInPlaceCtrl;

    bool CreateEditor() override;

    CWindow& GetWindow() override { return *this; }

    void SetValueText(const std::string& strText) override;

protected:
    bool OnNotify(SNotification& notification) override;

    virtual std::vector<std::string> GetChoices() const = 0;
    // The choice that shows the row's value.
    virtual std::string GetChoice() const = 0;

private:
    void Fill();

    bool m_bWithDifferent = false; // as it was filled
};

// The names of an enumeration, in their order.
class CPropCtrlCombobox : public CPropCtrlComboboxBase
{
public:
    using CPropCtrlComboboxBase::CPropCtrlComboboxBase;

protected:
    std::vector<std::string> GetChoices() const override;

    std::string GetChoice() const override { return GetValueText(); }
};

// "null" and the classes of which the pointed object can be, by name. Choosing a class makes a new
// object, as far as the edited object takes it (CRTTIObject::AdoptObject).
class CPropCtrlClassCombobox : public CPropCtrlComboboxBase
{
public:
    using CPropCtrlComboboxBase::CPropCtrlComboboxBase;

protected:
    std::vector<std::string> GetChoices() const override;
    std::string GetChoice() const override;
};
