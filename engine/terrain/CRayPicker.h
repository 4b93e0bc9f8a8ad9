#pragma once

#include "engine/terrain/CHeightPyramid.h"
#include "engine/terrain/CStillGround.h"
#include "host/HostTypes.h"

// Finds where a half-line first meets the triangles of a height field. Lives for one pick on the
// stack; borrows the heights and their pyramid, which must be up to date.
//
// The line is cut at the borders of blocks, cells and triangles, and each piece belongs to one
// triangle. The first piece whose end lies on the other side of the ground than the start of the
// line has the hit, so no rounding at a border lets a line slip through between two triangles.
class CRayPicker
{
public:
    static constexpr int TILE_LEVEL = 3; // of blocks as wide as a tile of the still ground
    static_assert(CHeightPyramid::BLOCK << TILE_LEVEL == CStillGround::TILE);

    // The ground of another moment, where its tiles say so.
    struct SStill
    {
        const CStillGround::FnTile& getTile;
        const CHeightPyramid* pNow; // ranges of the heights in the view
    };

    // size: absolute values, terrain units. pStill: borrowed; the pyramid is then that of the still
    // ground from TILE_LEVEL on. Null: the heights are those of the view.
    CRayPicker(const SHeightView& view,
               const CHeightPyramid& pyramid,
               const SVec3& size,
               const SStill* pStill = nullptr);

    // Terrain units; the direction has any length. False when nothing is hit, for a direction of
    // length 0, and for what is no number; hit is then left alone.
    bool Pick(const SVec3& origin, const SVec3& direction, SVec3& hit);

private:
    enum class ESide
    {
        Unknown,
        Above,
        Below
    };

    // One axis of the line in cells: position fAt + t * fBy.
    struct SAxis
    {
        double fAt = 0.0;
        double fBy = 0.0;
        double fPerCell = 0.0; // 1 / fBy
    };

    // The corners of a cell.
    struct SCorners
    {
        float fNorthWest;
        float fNorthEast;
        float fSouthWest;
        float fSouthEast;
    };

    SCorners GetCorners(uint32_t uX, uint32_t uZ) const;
    float GetStillHeight(uint32_t uX, uint32_t uZ) const;
    const SHeightRange* FindRange(int iLevel, uint32_t uX, uint32_t uZ) const;
    bool PickVertical(double fX, double fZ, double& fHit) const;
    bool VisitBlock(int iLevel, uint32_t uX, uint32_t uZ, double fFrom, double fTo);
    bool VisitHalves(int iLevel, uint32_t uX, uint32_t uZ, double fFrom, double fTo);
    bool VisitCell(uint32_t uX, uint32_t uZ, double fFrom, double fTo);
    bool VisitTriangle(const double (&plane)[3], double fFrom, double fTo);
    bool EnterSide(ESide eSide, double fAt);
    bool PassRange(float fMin, float fMax, double fFrom, double fTo, bool& bDone);

    double GetY(double t) const { return m_Y + t * m_StepY; }

    const SHeightView& m_View;
    const CHeightPyramid& m_Pyramid;
    SVec3 m_Size;
    const SStill* m_Still;
    SAxis m_X;
    SAxis m_Z;
    double m_Y = 0.0;
    double m_StepY = 0.0;
    ESide m_Side = ESide::Unknown;
    double m_Hit = 0.0;
};
