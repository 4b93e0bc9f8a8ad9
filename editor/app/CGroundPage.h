#pragma once

#include "engine/terrain/GroundChange.h"

#include <QWidget>

#include <functional>
#include <utility>

class CNumberBox;
class QAbstractSpinBox;
class QFormLayout;
class QSpinBox;

// A page of the level's properties that asks for one act on its ground.
class CGroundPage : public QWidget
{
public:
    // before: what the level measures now.
    CGroundPage(QWidget* pParent, const SGroundMeasures& before);

    // The act as the page has it now; false when it would change nothing.
    virtual bool GetAct(SGroundAct& act) const = 0;

    // Gives the keyboard to its first number; what is typed takes the place of what is there.
    void Begin();

    // Called whenever the page has another act.
    void SetOnChange(std::function<void()> onChange) { m_OnChange = std::move(onChange); }

protected:
    const SGroundMeasures& GetBefore() const { return m_Before; }

    // pszName: of the widget, for whoever looks for it.
    CNumberBox* AddLength(QFormLayout& form, const char* pszLabel, const char* pszName);
    QSpinBox* AddCells(QFormLayout& form, const char* pszLabel, const char* pszName);
    // What its fields take, on a line below them.
    void AddLimits(QFormLayout& form, const QString& strLimits);
    void Tell() const;

private:
    SGroundMeasures m_Before;
    QAbstractSpinBox* m_pFirst = nullptr; // the page's
    std::function<void()> m_OnChange;
};
