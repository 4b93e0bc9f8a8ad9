#pragma once

#include <QImage>
#include <QStringList>
#include <QWidget>

// The picture of what an import makes, seen from above, with the four corners of the level and what
// of the file is there: orientation is what goes wrong most often. Owned by its dialog.
class CImportPicture : public QWidget
{
public:
    explicit CImportPicture(QWidget* pParent);

    // corners: two lines each, at x = 0, z = 0; the end of that row; the start of the last row and
    // its end. A null image shows nothing.
    void Show(const QImage& image, const QStringList& corners);

    const QStringList& GetCorners() const { return m_Corners; }

    QSize sizeHint() const override;

    QSize minimumSizeHint() const override { return sizeHint() * 2 / 5; }

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    QRect PlaceImage() const; // within the widget

    QImage m_Image;
    QStringList m_Corners;
};
