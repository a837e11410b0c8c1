#pragma once

#include <QColor>
#include <QFont>
#include <QRectF>

class QPalette;

// Colours and fonts of the layout pictures for a light or a dark palette. The hues are told apart with every
// kind of colour vision, and nothing is told by hue alone.
class zoHPCPictureStyle final
{
public:
    // Units of a picture, which are points of a screen: 7 pt and not less.
    static constexpr int SmallestLetters = 10;

    explicit zoHPCPictureStyle(const QPalette& palette);

    static QColor withAlpha(QColor color, double alpha);
    // Of the outline that marks one of so many that are selected: of many that are small it is thin, so that they can
    // be told apart.
    static double markWidth(const QRectF& marked, int count);

    bool isDark = false;
    QColor background;
    QColor text;
    QColor faintText;
    QColor grid;
    QColor line;    // outlines
    QColor front;   // a wall that shows the viewer its picture
    QColor bad;     // what stands out as wrong
    QColor fadeOut; // the two ramps of a blend
    QColor fadeIn;
    QColor twice; // overlap without blend: light from both
    QColor current;
    QColor leftEye;
    QColor rightEye;
    QColor bothEyes;
    QColor panel; // behind the screens of a node
    QFont font;
};
