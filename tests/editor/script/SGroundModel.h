#pragma once

#include "host/HostTypes.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

struct SVertexModel
{
    float fHeight = 0.0F;
    bool bProtected = false;

    bool operator==(const SVertexModel&) const = default;
};

// The second computation: each vertex is carried to its new place.
struct SGroundModel
{
    int iColumns = 0;
    int iRows = 0;
    SVec3 size;
    std::map<std::pair<int, int>, SVertexModel> vertices; // by x and z

    bool operator==(const SGroundModel& other) const
    {
        return iColumns == other.iColumns && iRows == other.iRows && size.x == other.size.x &&
               size.y == other.size.y && size.z == other.size.z && vertices == other.vertices;
    }

    template <typename TPlace> void Carry(TPlace place)
    {
        std::map<std::pair<int, int>, SVertexModel> moved;
        for (const auto& [at, vertex] : vertices)
        {
            moved[place(at.first, at.second)] = vertex;
        }
        vertices = std::move(moved);
    }

    void Turn()
    {
        Carry([this](int x, int z) { return std::pair(iRows - 1 - z, x); });
        std::swap(iColumns, iRows);
        std::swap(size.x, size.z);
    }

    // What lies outside goes, and holes are filled as the nearest vertex that was carried is.
    void Frame(int iNewColumns, int iNewRows, bool bAtZero)
    {
        std::map<std::pair<int, int>, SVertexModel> framed;
        const auto [iWest, iNorth] = vertices.begin()->first;
        const auto [iEast, iSouth] = vertices.rbegin()->first;
        for (int x = 0; x < iNewColumns; ++x)
        {
            for (int z = 0; z < iNewRows; ++z)
            {
                const std::pair at(std::clamp(x, iWest, iEast), std::clamp(z, iNorth, iSouth));
                const float fNew = bAtZero ? 0.0F : vertices.at(at).fHeight;
                framed[{x, z}] =
                    at == std::pair(x, z) ? vertices.at(at) : SVertexModel{fNew, false};
            }
        }
        vertices = std::move(framed);
        size.x = static_cast<float>(double{size.x} / (iColumns - 1) * (iNewColumns - 1));
        size.z = static_cast<float>(double{size.z} / (iRows - 1) * (iNewRows - 1));
        iColumns = iNewColumns;
        iRows = iNewRows;
    }

    void Adjust(double dFactor, double dBy)
    {
        for (auto& [at, vertex] : vertices)
        {
            const double dWanted = dFactor * double{vertex.fHeight} + dBy;
            const double dCut = std::clamp(dWanted, 0.0, std::fabs(double{size.y}));
            vertex.fHeight = vertex.fHeight < 0.0F ? vertex.fHeight : static_cast<float>(dCut);
        }
    }
};
