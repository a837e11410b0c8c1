#pragma once

#include <zoWallSetup.h>

#include <QColor>
#include <QPolygonF>

#include <vector>

class QPainter;
class QRectF;
class zoOffAxisView;

// The test image: a scene in millimetres of the room in which everything that is wrong with a wall shows. A floor with
// a grid of half metres, numbered balls, the horizon at the height of the eyes with its directions in degrees, and a
// line along every edge of every wall. It is the same for all viewports; each sees its part of it.
class zoTestScene final
{
public:
    static constexpr int BallCount = 300;

    struct Ball
    {
        zoWallPoint middle;
        double radius; // mm
        QColor colour;
        int digits;
        std::vector<QPolygonF> number; // outlines, 1 high, y up
    };

    // Colours that nothing else in the scene has.
    static const QColor HorizonColour;
    static const QColor EdgeColour;

    // Around these walls and the point between the eyes.
    zoTestScene(const std::vector<zoWallPlane>& walls, const zoWallPoint& head);

    // What the view's eye sees through its plane, which fills the target.
    void paint(QPainter& painter, const QRectF& target, const zoOffAxisView& view) const;

    double floorHeight() const { return m_floor; } // mm
    double horizonWidth() const;                   // in degrees, of the line
    const std::vector<Ball>& balls() const { return m_balls; }

private:
    class Canvas;

    void addBalls();
    void paintSky(Canvas& canvas) const;
    void paintFloor(Canvas& canvas) const;
    void paintHorizon(Canvas& canvas) const;
    void paintBalls(Canvas& canvas) const;
    void paintBall(Canvas& canvas, const Ball& ball) const;
    void paintEdges(Canvas& canvas) const;

    std::vector<zoWallPlane> m_walls;
    zoWallPoint m_head;
    double m_floor = 0.0;
    double m_reach = 0.0; // from the head to the furthest corner of a wall, mm
    std::vector<Ball> m_balls;
};
