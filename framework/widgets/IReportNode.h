#pragma once

#include "framework/drawing/Geometry.h"
#include "host/Export.h"

#include <cstdint>
#include <string>

class CImageList;
class CWindow;

// The window of a CListCtrl, whose operations these are. Rows and columns that are not there are
// ignored and have nothing. Lengths are device pixels.
class TELLUR_API IReportNode
{
public:
    virtual int InsertColumn(int iColumn, const char* pszTitle, int iWidth) = 0;
    virtual int GetColumnCount() const = 0;
    virtual int GetWidthOfColumn(int iColumn) const = 0;
    virtual void SetWidthOfColumn(int iColumn, int iWidth) = 0;

    virtual int InsertRow(int iRow, const char* pszText) = 0;
    virtual void RemoveRow(int iRow) = 0;
    virtual void RemoveRows() = 0;
    virtual int GetRowCount() const = 0;
    virtual void SetCellText(int iRow, int iColumn, const char* pszText) = 0;
    virtual std::string GetCellText(int iRow, int iColumn) const = 0;
    virtual void SetRowNumber(int iRow, uintptr_t uData) = 0;
    virtual uintptr_t GetRowNumber(int iRow) const = 0;
    virtual void SetIndent(int iRow, int iLevels) = 0;
    virtual void SetImage(int iRow, int iImage) = 0;
    virtual void SetRowTip(int iRow, const char* pszText) = 0;
    virtual void SetImages(const CImageList* pImages) = 0;

    virtual void Select(int iRow) = 0;
    virtual int GetSelected() const = 0;
    virtual void ShowRow(int iRow) = 0;
    virtual SRect GetCellRect(int iRow, int iColumn) const = 0;
    virtual bool FindCell(SPoint point, int& iRow, int& iColumn) const = 0;

    virtual void PlaceWindow(CWindow& window, int iRow, int iColumn, int iLeft, int iRight) = 0;
    virtual void RemoveWindow(CWindow& window) = 0;

protected:
    ~IReportNode() = default;
};
