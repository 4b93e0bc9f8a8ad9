#include "engine/imaging/QtPicture.h"

#include <QBuffer>
#include <QImageReader>

namespace
{

// The text of the read that runs on this thread, null while none does. Another thread's messages go
// on to the handler before.
thread_local std::string* t_pComplaint = nullptr;
QtMessageHandler s_pPreviousHandler = nullptr;

void OnQtMessage(QtMsgType eType, const QMessageLogContext& Context, const QString& strText)
{
    if (t_pComplaint == nullptr)
    {
        if (s_pPreviousHandler != nullptr)
        {
            s_pPreviousHandler(eType, Context, strText);
        }
    }
    else if (t_pComplaint->empty())
    {
        *t_pComplaint = strText.simplified().toStdString();
    }
}

// Qt's settings for one read, set back at its end.
class CQtReadScope
{
public:
    explicit CQtReadScope(std::string& strComplaint)
        : m_AllocationLimit(QImageReader::allocationLimit())
    {
        t_pComplaint = &strComplaint;
        s_pPreviousHandler = qInstallMessageHandler(OnQtMessage);
        QImageReader::setAllocationLimit(0);
    }

    ~CQtReadScope()
    {
        QImageReader::setAllocationLimit(m_AllocationLimit);
        qInstallMessageHandler(s_pPreviousHandler);
        t_pComplaint = nullptr;
    }

    CQtReadScope(const CQtReadScope&) = delete;
    CQtReadScope& operator=(const CQtReadScope&) = delete;

private:
    int m_AllocationLimit;
};

} // namespace

QImage
ReadQtPicture(std::span<const uint8_t> Data, const char* pszFormat, std::string& strComplaint)
{
    const CQtReadScope Scope(strComplaint);
    QByteArray Bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(Data.data()),
                                               static_cast<qsizetype>(Data.size()));
    QBuffer Buffer(&Bytes);
    Buffer.open(QIODevice::ReadOnly);
    QImageReader Reader(&Buffer, pszFormat);
    QImage Picture;
    if (!Reader.read(&Picture))
    {
        if (strComplaint.empty())
        {
            strComplaint = Reader.errorString().simplified().toStdString();
        }
        return {};
    }
    return Picture;
}
