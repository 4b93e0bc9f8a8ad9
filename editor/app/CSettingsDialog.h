#pragma once

#include <QDialog>

#include <functional>
#include <vector>

class QFormLayout;
struct SEditorSettings;
struct SSetting;

// The editor's own settings and those that the plug-in has registered. Values change when it is
// left with OK.
class CSettingsDialog : public QDialog
{
public:
    // Both borrowed; registered names members of the plug-in.
    CSettingsDialog(QWidget* pParent,
                    SEditorSettings& settings,
                    const std::vector<SSetting>& registered);

    void accept() override;

private:
    void AddRegistered(QFormLayout& form, const SSetting& setting);
    void AddCheck(QFormLayout& form, const char* pszLabel, bool& bValue);
    void AddInt(QFormLayout& form, const QString& strLabel, int iLeast, int iMost, int32_t& iValue);

    std::vector<std::function<void()>> m_Apply; // one for each value
};
