#pragma once

#include "editor/view/CPointForms.h"

#include <QDialog>

class QCheckBox;
class QSlider;

// Asks what the pressure of a pen does. A pen can be tried on the picture of the curve, which then
// shows where it is. The settings change when the dialog is accepted.
class CPenDialog : public QDialog
{
public:
    CPenDialog(QWidget* pParent, SFormSettings& settings); // settings: borrowed

    void accept() override;

private:
    SFormSettings& m_Settings;
    SFormSettings m_Shown; // what the picture shows
    QCheckBox* m_pUse;     // all the dialog's
    QSlider* m_pCurve;
};
