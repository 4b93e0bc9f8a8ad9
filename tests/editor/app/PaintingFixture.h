#pragma once

#include "engine/paint/CPaintLayer.h"
#include "host/Image.h"
#include "tests/editor/app/EditorFixture.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>
#include <QScreen>
#include <QWidget>

#include <algorithm>

inline constexpr uint32_t SIDE = 64; // texels; the level has 320 units

// The dialog that paints, open, with a bitmap of its own; worked by mouse and keys.
class CPainting : public CEditorFixture
{
protected:
    void StartWithBitmap()
    {
        ASSERT_NO_FATAL_FAILURE(Start());
        std::vector<uint8_t> colors;
        for (uint32_t i = 0; i < SIDE * SIDE; ++i)
        {
            const auto uShade = static_cast<uint8_t>(100 + i % 7 * 3);
            colors.insert(colors.end(), {uShade, static_cast<uint8_t>(uShade + 20), 60});
        }
        const std::unique_ptr<IImage> pImage(
            IL_CreateImageFromBufferFormat(SIDE, SIDE, EImageFormat::Rgb24, colors.data()));
        m_Bitmap = m_Folder.Path("types.png");
        ASSERT_TRUE(IL_SaveImage(m_Bitmap.c_str(), pImage.get(), nullptr));
        OpenDialog();
        TypeInto(2140, m_Bitmap.c_str());
        TypeInto(2158, "40");
    }

    // "Edit bitmap on terrain" from the menu bar.
    void OpenDialog()
    {
        for (QAction* pTop : m_Window->menuBar()->actions())
        {
            if (pTop->text().remove('&') == "Tools")
            {
                for (QAction* pTerrain : pTop->menu()->actions())
                {
                    if (pTerrain->text().remove('&') == "Terrain")
                    {
                        pTerrain->menu()->actions()[1]->trigger();
                    }
                }
            }
        }
        Settle();
        ASSERT_NE(GetDialog(), nullptr);
        ASSERT_TRUE(GetDialog()->isVisible());
        const int iRoom = GetDialog()->screen()->geometry().width() - GetDialog()->width();
        GetDialog()->move(std::clamp(iRoom, 0, 700), 20); // beside the first view where it can
        GetDialog()->activateWindow();
        Settle();
    }

    QWidget* GetDialog()
    {
        const QWidgetList widgets = QApplication::topLevelWidgets();
        const auto found =
            std::find_if(widgets.begin(),
                         widgets.end(),
                         [](const QWidget* pWidget)
                         { return pWidget->windowTitle() == "Edit bitmap on terrain"; });
        return found != widgets.end() ? *found : nullptr;
    }

    template <class TWidget = QWidget> TWidget& Item(int iId)
    {
        return *GetDialog()->findChild<TWidget*>(QString::number(iId));
    }

    bool IsChecked(int iId) { return Item<QAbstractButton>(iId).isChecked(); }

    void TypeInto(int iId, const char* pszText)
    {
        Click(Item(iId));
        Do({"key", "ctrl+a"});
        Do({"type", pszText});
    }

    std::vector<uint8_t> GetTexels() { return GetTexels(*GetHost().GetCPaintLayer().GetImage()); }

    static std::vector<uint8_t> GetTexels(const IImage& image)
    {
        const size_t nBytes =
            size_t{image.GetWidth()} * image.GetHeight() * image.GetBitsPerPixel() / 8;
        return {image.GetRawData(), image.GetRawData() + nBytes};
    }

    // Every texel of a file as another program reads it: red, green, blue.
    std::string ReadWithAnotherProgram(const std::string& strPath)
    {
        QProcess process;
        process.start("convert", {QString::fromStdString(strPath), "-depth", "8", "rgb:-"});
        EXPECT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return process.readAllStandardOutput().toStdString();
    }

    size_t CountRed(const std::string& strColors)
    {
        size_t nRed = 0;
        for (size_t i = 0; i + 2 < strColors.size(); i += 3)
        {
            const auto at = [&](size_t k)
            {
                return static_cast<uint8_t>(strColors[i + k]);
            };
            nRed += at(0) > 200 && at(1) < 60 ? 1 : 0;
        }
        return nRed;
    }

    std::string m_Bitmap;
};
