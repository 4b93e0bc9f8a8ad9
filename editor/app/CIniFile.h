#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <string>

// An INI file of the user's, by key as "group/key", that is written again and again while the
// program runs. Values of keys that nobody here knows stay in it. UI thread.
class CIniFile
{
public:
    explicit CIniFile(const std::string& strFile); // a full path

    const QVariantMap& GetValues() const { return m_Values; } // as the file had them

    // To be called once everything was taken out of the values. known: every key that has a
    // meaning, as it is now; wrong: those whose values had none. A file that is no such file or has
    // wrong values is one logged line and is kept beside itself before it is replaced, see
    // KeepFile.
    void Check(const QVariantMap& known, const QStringList& wrong);

    // Writes the values when they are others than last time. False after one logged line; what
    // cannot be written is not tried again until it is something else.
    bool Write(const QVariantMap& values);

    void Forget() { m_Written.clear(); } // the next values are written whatever they are

private:
    QString m_File;
    QVariantMap m_Values;
    QVariantMap m_Written;
    bool m_bFormat = true;     // it could be read as an INI file
    bool m_bMayReplace = true; // the file was understood, or is kept aside
};

// The value of a key, when it is there and of the type that it has to be. A wrong one leaves the
// value as it is and adds the key to the list.
struct SIniReader
{
    const QVariantMap& values;
    QStringList& wrong;

    void Read(const char* pszKey, bool& bValue);
    void Read(const char* pszKey, int& iValue);
    void Read(const char* pszKey, float& fValue); // finite
};
