#pragma once

#include "framework/core/Resources.h"

#include <QLabel>
#include <QList>

class CFormWindow;
class CWindowNode;
class QBoxLayout;
class QVBoxLayout;
class QWidget;

// Makes the controls of a dialog template on a widget and lays them out: groups below each other in
// columns, rows in groups, controls in rows. All lengths follow the font, so nothing is cut at any
// scale. The keyboard goes through them in the template's order.
class CFormBuilder
{
public:
    CFormBuilder(CFormWindow& form, QWidget& ground);

    void Build(const SDialogResource& dialog);

private:
    void AddGroup(const SGroupResource& group, QVBoxLayout& column);
    void AddRow(const SRowResource& row, QWidget& ground, QVBoxLayout& group);
    QWidget* AddControl(const SControlResource& control, QWidget& ground, QBoxLayout& row);
    void SizeControl(const SControlResource& control, QWidget& widget) const;
    void AlignLabels();

    CFormWindow& m_Form;
    QWidget& m_Ground;
    QList<QLabel*> m_FirstLabels; // those that begin a row with more behind them
};
