#pragma once

#include <vector>
#include <zoWallSetup.h>

class QImage;

// How a picture fades into its neighbours: along an edge the light of one falls as that of the other rises, so that
// both together are as bright as one alone.
class zoBlendRamp final
{
public:
    // Widths in pixels of a picture of that size. The exponent of the projectors' response, 1 for light as it is.
    zoBlendRamp(const zoWallEdges& edges, int width, int height, double gamma);

    bool isEmpty() const { return m_isEmpty; }
    // By what the value of a pixel is multiplied, from 0 to 1; counted from the top left.
    double factor(int x, int y) const { return m_columns[std::size_t(x)] * m_rows[std::size_t(y)]; }
    // Factors of the columns from the left and of the rows from the top.
    const std::vector<double>& columns() const { return m_columns; }
    const std::vector<double>& rows() const { return m_rows; }

    // Multiplies the pixels of an image of this size and of 32 bits per pixel.
    void apply(QImage& image) const;

    // The share of the light at a place across the overlap, from 0 at the outer edge to 1. The shares of both pictures
    // add up to 1.
    static double light(double place);

private:
    bool m_isEmpty;
    std::vector<double> m_columns;
    std::vector<double> m_rows;
};
