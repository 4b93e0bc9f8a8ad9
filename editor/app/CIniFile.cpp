#include "editor/app/CIniFile.h"

#include "editor/core/KeptFiles.h"
#include "host/Log.h"

#include <QFile>
#include <QSettings>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace
{

// False for a value that is there and no finite number.
bool TakeNumber(const SIniReader& reader, const char* pszKey, double& fNumber)
{
    const auto found = reader.values.find(pszKey);
    if (found == reader.values.end())
    {
        return false;
    }
    bool bNumber = false;
    const double fValue = found->toDouble(&bNumber);
    if (!bNumber || !std::isfinite(fValue))
    {
        reader.wrong << pszKey;
        return false;
    }
    fNumber = fValue;
    return true;
}

} // namespace

void SIniReader::Read(const char* pszKey, bool& bValue)
{
    const auto found = values.find(pszKey);
    if (found == values.end())
    {
        return;
    }
    const QString strText = found->toString().toLower();
    const bool bTrue = strText == "true" || strText == "1";
    if (!bTrue && strText != "false" && strText != "0")
    {
        wrong << pszKey;
        return;
    }
    bValue = bTrue;
}

void SIniReader::Read(const char* pszKey, int& iValue)
{
    constexpr double LEAST = std::numeric_limits<int>::min();
    constexpr double MOST = std::numeric_limits<int>::max();
    double fNumber = 0.0;
    if (TakeNumber(*this, pszKey, fNumber))
    {
        iValue = static_cast<int>(std::clamp(fNumber, LEAST, MOST));
    }
}

void SIniReader::Read(const char* pszKey, float& fValue)
{
    constexpr double MOST = std::numeric_limits<float>::max();
    double fNumber = 0.0;
    if (TakeNumber(*this, pszKey, fNumber))
    {
        fValue = static_cast<float>(std::clamp(fNumber, -MOST, MOST));
    }
}

CIniFile::CIniFile(const std::string& strFile)
    : m_File(QString::fromStdString(strFile))
{
    const QSettings file(m_File, QSettings::IniFormat);
    for (const QString& strKey : file.allKeys())
    {
        m_Values[strKey] = file.value(strKey);
    }
    m_bFormat = file.status() == QSettings::NoError;
}

void CIniFile::Check(const QVariantMap& known, const QStringList& wrong)
{
    // Bytes of another kind may look like keys.
    const bool bOwn =
        m_Values.isEmpty() || std::any_of(m_Values.keyBegin(),
                                          m_Values.keyEnd(),
                                          [&](const QString& str) { return known.contains(str); });
    if (m_bFormat && bOwn && wrong.isEmpty())
    {
        m_Written = m_Values.keys() == known.keys() ? known : m_Written;
        return;
    }
    const QString strFault =
        m_bFormat && bOwn ? "wrong values of " + wrong.join(", ") : QString("is no settings file");
    WarnLog("[CIniFile::Check] %s: %s\n", qUtf8Printable(m_File), qUtf8Printable(strFault));
    m_bMayReplace = !KeepFile(m_File.toStdString()).empty();
    // What is no INI file is no place for new lines.
    m_bFormat = m_bFormat && bOwn;
}

bool CIniFile::Write(const QVariantMap& values)
{
    if (!m_bMayReplace || values == m_Written)
    {
        return m_bMayReplace;
    }
    m_Written = values;
    if (!std::exchange(m_bFormat, true))
    {
        QFile::remove(m_File);
    }
    QSettings file(m_File, QSettings::IniFormat);
    for (auto it = values.begin(); it != values.end(); ++it)
    {
        file.setValue(it.key(), it.value());
    }
    file.sync();
    if (file.status() != QSettings::NoError)
    {
        CrashLog("[CIniFile::Write] %s cannot be written\n", qUtf8Printable(m_File));
        return false;
    }
    return true;
}
