#pragma once

#include <zoWallSetup.h>

#include <QColor>
#include <QPolygonF>
#include <QString>

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
        QString number;
        std::vector<QPolygonF> outlines; // of the number, 1 high, y up
    };

    // Flat, and convex.
    struct Figure
    {
        std::vector<zoWallPoint> corners; // in order
        QColor colour;
    };

    // A number that stands upright on a plane of its own.
    struct Number
    {
        QString digits;
        zoWallPoint middle;
        zoWallPoint right; // as long as the number is high, mm
        zoWallPoint up;
        QColor colour;
    };

    // Colours that nothing else in the scene has.
    static const QColor SkyColour; // of the sky just above the horizon
    static const QColor HorizonColour;
    static const QColor EdgeColour;
    // Pixels around a picture up to which figures are drawn; far enough that no edge in it shifts.
    static constexpr double CutOff = 4096;

    // Around these walls and the point between the eyes.
    zoTestScene(const std::vector<zoWallPlane>& walls, const zoWallPoint& head);

    // What the view's eye sees through its plane, which fills the target.
    void paint(QPainter& painter, const QRectF& target, const zoOffAxisView& view) const;

    double floorHeight() const { return m_floor; } // mm
    double horizonWidth() const;                   // in degrees, of the line
    double reach() const { return m_reach; }       // from the head to the furthest corner of a wall, mm
    const std::vector<Ball>& balls() const { return m_balls; }
    // What is painted beside the balls and the sky, each in the order in which it is painted.
    std::vector<Figure> floor() const; // from the widest disc to the smallest, all at the same height
    std::vector<Figure> floorLines() const;
    std::vector<Figure> horizon() const; // as far away as the sky
    std::vector<Number> directions() const;
    std::vector<Figure> edges() const;
    // On the ball, as seen from the eye.
    Number numberOf(const Ball& ball, const zoWallPoint& eye) const;

private:
    class Canvas;

    void addBalls();
    void paintSky(Canvas& canvas) const;
    void paintFloor(Canvas& canvas) const;
    void paintHorizon(Canvas& canvas) const;
    void paintNumber(Canvas& canvas, const Number& number) const;
    void paintNumber(Canvas& canvas, const Number& number, const std::vector<QPolygonF>& outlines) const;
    void paintBalls(Canvas& canvas) const;
    void paintBall(Canvas& canvas, const Ball& ball) const;

    struct Disc;
    Disc discOf(const Ball& ball, const zoWallPoint& eye) const;

    std::vector<zoWallPlane> m_walls;
    zoWallPoint m_head;
    double m_floor = 0.0;
    double m_reach = 0.0;
    std::vector<Ball> m_balls;
};
