#include "editor/app/CPicturePreview.h"

#include "editor/core/Words.h"
#include "engine/imaging/PicturePreview.h"

#include <QFileInfo>
#include <QImage>
#include <QList>
#include <QPixmap>
#include <QVBoxLayout>

namespace
{

constexpr int SIDE = 200;                    // of what is shown, Qt's pixels
constexpr int WAIT_MS = 120;                 // until a file is read
constexpr uint64_t MOST_PIXELS = 17'000'000; // of a picture that is: a mask of 4097 x 4097
constexpr int SAMPLES = 2;                   // along each side of a pixel, before it is smoothed
constexpr QRgb EMPTY = 0xFF000000;           // of a palette's entry that is not there

// A view of the pixels, which the preview keeps.
QImage MakeView(const SPicturePreview& preview)
{
    const IImage& image = *preview.pImage;
    const int iWidth = static_cast<int>(image.GetWidth());
    const int iHeight = static_cast<int>(image.GetHeight());
    const int iBytes = static_cast<int>(image.GetBitsPerPixel() / 8);
    const QImage::Format eFormat = iBytes == 4                   ? QImage::Format_RGBA8888
                                   : iBytes == 3                 ? QImage::Format_RGB888
                                   : preview.pPalette != nullptr ? QImage::Format_Indexed8
                                                                 : QImage::Format_Grayscale8;
    QImage view(image.GetRawData(), iWidth, iHeight, qsizetype{iWidth} * iBytes, eFormat);
    if (eFormat == QImage::Format_Indexed8)
    {
        QList<QRgb> colors(256, EMPTY);
        for (uint32_t i = 0; i < preview.pPalette->GetCount(); ++i)
        {
            const uint8_t* pEntry = preview.pPalette->GetEntry(i);
            colors[static_cast<int>(i)] = qRgb(pEntry[0], pEntry[1], pEntry[2]);
        }
        view.setColorTable(colors);
    }
    return view;
}

QPixmap MakePixmap(const SPicturePreview& preview, double fScale)
{
    QImage view = MakeView(preview);
    const QSize room = (QSizeF(SIDE, SIDE) * fScale).toSize();
    const QSize size = view.size().scaled(room, Qt::KeepAspectRatio).expandedTo({1, 1});
    const QSize coarse = size * SAMPLES;
    if (view.width() > coarse.width() && view.height() > coarse.height())
    {
        view = view.scaled(coarse, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    }
    QPixmap picture =
        QPixmap::fromImage(view.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    picture.setDevicePixelRatio(fScale);
    return picture;
}

} // namespace

CPicturePreview::CPicturePreview(QWidget* pParent)
    : QWidget(pParent)
    , m_pPicture(new QLabel(this))
    , m_pText(new QLabel(this))
{
    setObjectName("preview");
    setFixedWidth(SIDE + fontMetrics().height());
    m_pPicture->setObjectName("preview-picture");
    m_pPicture->setAccessibleName(Words("Preview of the picture"));
    m_pPicture->setFrameShape(QFrame::StyledPanel);
    m_pPicture->setAlignment(Qt::AlignCenter);
    m_pPicture->setMinimumHeight(SIDE + fontMetrics().height());
    m_pText->setObjectName("preview-text");
    m_pText->setAccessibleName(Words("Size of the picture, or why it is not shown"));
    m_pText->setTextFormat(Qt::PlainText);
    m_pText->setWordWrap(true);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pPicture);
    pLayout->addWidget(m_pText);
    pLayout->addStretch(1);
    m_Timer.setSingleShot(true);
    m_Timer.callOnTimeout(this, [this] { Load(); });
}

void CPicturePreview::Show(const QString& strPath)
{
    m_Path = QFileInfo(strPath).isFile() ? strPath : QString();
    m_pPicture->clear();
    m_pText->clear();
    m_Timer.start(WAIT_MS);
}

void CPicturePreview::Load()
{
    if (m_Path.isEmpty())
    {
        return;
    }
    const SPicturePreview preview = LoadPicturePreview(m_Path.toUtf8().constData(), MOST_PIXELS);
    QStringList lines;
    if (preview.uWidth != 0)
    {
        lines << QString("%1 x %2").arg(preview.uWidth).arg(preview.uHeight);
    }
    if (preview.pImage != nullptr)
    {
        m_pPicture->setPixmap(MakePixmap(preview, devicePixelRatioF()));
    }
    else
    {
        lines << QString::fromStdString(preview.strWhy);
    }
    m_pText->setText(lines.join('\n'));
}
