#pragma once

#include <QDialog>

#include <functional>
#include <map>
#include <string>
#include <vector>

class QFormLayout;
class QSpinBox;
class QVBoxLayout;
struct SEditFlags;
struct SEditorSettings;
struct SSetting;

// The editor's own settings and those that the plug-in has registered, by their categories. Values
// change when it is left with OK, the defaults too that it can bring back.
class CSettingsDialog : public QDialog
{
public:
    // All borrowed; registered names members of the plug-in, and resetPlugin puts all that the
    // plug-in has for settings back to its defaults.
    CSettingsDialog(QWidget* pParent,
                    SEditorSettings& settings,
                    const std::vector<SSetting>& registered,
                    std::function<void()> resetPlugin);

    void accept() override;

private:
    QFormLayout& GetGroup(const std::string& strCategory);
    void AddOwn(SEditorSettings& settings);
    void AddRegistered(const SSetting& setting);
    void
    AddNumber(QFormLayout& form, const QString& strLabel, const SEditFlags& flags, float& fValue);
    void AddCheck(QFormLayout& form,
                  const QString& strLabel,
                  bool& bValue,
                  const std::function<bool()>& getDefault);
    void AddInt(QFormLayout& form,
                const QString& strLabel,
                int iLeast,
                int iMost,
                int32_t& iValue,
                const std::function<int32_t()>& getDefault);
    void RestoreDefaults();

    const std::vector<SSetting>& m_Registered;
    std::function<void()> m_ResetPlugin;
    QVBoxLayout* m_pGroups;                      // the dialog's
    std::map<std::string, QFormLayout*> m_Forms; // by category
    std::vector<std::function<void()>> m_Apply;  // one for each value
    std::vector<std::function<void()>>
        m_ShowDefaults;       // as m_Apply, while the defaults are in force
    bool m_bDefaults = false; // they were asked for
};
