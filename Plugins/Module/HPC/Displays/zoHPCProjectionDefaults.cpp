#include "zoHPCProjectionDefaults.h"

#include "zoHPCProjectionColumns.h"

const std::map<int, QVariant>& zoHPCProjectionDefaults::values()
{
    using P = zoHPCProjectionColumns;
    static const std::map<int, QVariant> s_defaults{{P::RightOffsetX, 0},
                                                    {P::RightOffsetY, 0},
                                                    {P::Row, 1},
                                                    {P::TileColumn, 1},
                                                    {P::Rows, 1},
                                                    {P::Columns, 1},
                                                    {P::OverlapX, 0.0},
                                                    {P::OverlapY, 0.0},
                                                    {P::CaveWidth, 2000.0},
                                                    {P::CaveHeight, 2000.0},
                                                    {P::CaveDepth, 2000.0},
                                                    {P::CaveX, 0.0},
                                                    {P::CaveY, 0.0},
                                                    {P::CaveZ, 0.0},
                                                    {P::Width, 3000.0},
                                                    {P::Height, 2000.0},
                                                    {P::Distance, 1500.0},
                                                    {P::X1, -1.0},
                                                    {P::Y1, -1.0},
                                                    {P::Z1, -1.0},
                                                    {P::X2, 1.0},
                                                    {P::Y2, -1.0},
                                                    {P::Z2, -1.0},
                                                    {P::X3, 1.0},
                                                    {P::Y3, 1.0},
                                                    {P::Z3, -1.0}};
    return s_defaults;
}
