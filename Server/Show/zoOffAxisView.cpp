#include "zoOffAxisView.h"

#include "zoRoomMath.h"

using namespace zoRoomMath;

zoOffAxisView::zoOffAxisView(const zoWallPlane& plane, const zoWallPoint& eye)
    : m_eye(eye), m_corner(plane.lowerLeft)
{
    const zoWallPoint right = difference(plane.lowerRight, plane.lowerLeft);
    m_right = unit(right);
    // Corners from a file need not be at right angles; the frustum's are.
    const zoWallPoint side = difference(plane.upperRight, plane.lowerRight);
    const zoWallPoint up = difference(side, scaled(dot(side, m_right), m_right));
    m_up = unit(up);
    m_normal = cross(m_right, m_up);
    m_width = length(right);
    m_height = length(up);
    m_distance = dot(difference(eye, m_corner), m_normal);
    // An eye in the plane sees it as a line.
    m_isValid = m_width > 0.0 && m_height > 0.0 && m_distance > 1.0e-6 * (m_width + m_height);
}

zoOffAxisView::Frustum zoOffAxisView::frustum(double nearDistance) const
{
    if (!m_isValid)
        return {};
    const zoWallPoint toCorner = difference(m_corner, m_eye);
    const double scale = nearDistance / m_distance;
    const double left = dot(toCorner, m_right);
    const double bottom = dot(toCorner, m_up);
    return {left * scale, (left + m_width) * scale, bottom * scale, (bottom + m_height) * scale};
}

double zoOffAxisView::depth(const zoWallPoint& point) const
{
    return dot(difference(m_eye, point), m_normal);
}

QPointF zoOffAxisView::project(const zoWallPoint& point) const
{
    const zoWallPoint ray = difference(point, m_eye);
    const zoWallPoint onPlane = sum(m_eye, scaled(m_distance / depth(point), ray));
    const zoWallPoint fromCorner = difference(onPlane, m_corner);
    return {dot(fromCorner, m_right) / m_width, dot(fromCorner, m_up) / m_height};
}

std::vector<QPointF> zoOffAxisView::project(const std::vector<zoWallPoint>& corners) const
{
    std::vector<QPointF> result;
    if (!m_isValid || corners.empty())
        return result;
    const double nearest = m_distance / 100.0;
    zoWallPoint before = corners.back();
    double depthBefore = depth(before) - nearest;
    for (const zoWallPoint& corner : corners) {
        const double depthHere = depth(corner) - nearest;
        if ((depthBefore < 0.0) != (depthHere < 0.0)) {
            const double share = depthBefore / (depthBefore - depthHere);
            result.push_back(project(sum(before, scaled(share, difference(corner, before)))));
        }
        if (depthHere >= 0.0)
            result.push_back(project(corner));
        before = corner;
        depthBefore = depthHere;
    }
    return result;
}
