#include "zoTestCase.h"

#include <zoHPCSurveyPoints.h>
#include <zoHPCSurveyReader.h>

#include <QApplication>

#include <cmath>
#include <limits>
#include <random>

// The text of a measured room.
class tst_zoHPCSurveyReader final : public zoTestCase
{
    Q_OBJECT

private slots:
    void lengthsHaveUnits_data();
    void lengthsHaveUnits();
    void tolerancesAreThoseOfTheLine();
    void linesComeInAnyOrder();
    void namesMayHaveBlanks();
    void mistakeNamesItsLine_data();
    void mistakeNamesItsLine();
    void mistakesAreNotEndless();
    void numbersAtTheLimits_data();
    void numbersAtTheLimits();
    void pointListsAreRead_data();
    void pointListsAreRead();
    void pointListsHaveALimit();
    void listsWithoutACornerHaveNoInstrument();
    void pointListMistakes_data();
    void pointListMistakes();
    void threeDigitsBehindACommaAreTold_data();
    void threeDigitsBehindACommaAreTold();
    void hostileTextEnds_data();
    void hostileTextEnds();

private:
    static zoHPCSurveyReader::Fetch none()
    {
        return [](const QString&, QString&, QString& reason) {
            reason = QStringLiteral("no such file");
            return false;
        };
    }
};

void tst_zoHPCSurveyReader::lengthsHaveUnits_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("height");

    QTest::newRow("mm") << "wall A size 3600 x 2000" << 3600.0 << 2000.0;
    QTest::newRow("without-x") << "wall A size 3600 2000" << 3600.0 << 2000.0;
    QTest::newRow("one-word") << "wall A size 3600x2000" << 3600.0 << 2000.0;
    QTest::newRow("metres") << "wall A size 3.6 m x 2m" << 3600.0 << 2000.0;
    QTest::newRow("one-word-metres") << "wall A size 3.6mx2m" << 3600.0 << 2000.0;
    QTest::newRow("comma") << "wall A size 3,6 m x 2,05 m" << 3600.0 << 2050.0;
    QTest::newRow("inches") << "wall A size 100in x 12 ft" << 2540.0 << 3657.6;
    QTest::newRow("unit-line") << "unit cm\nwall A size 360 x 2 m" << 3600.0 << 2000.0;
    QTest::newRow("times-sign") << QString::fromUtf8("wall A size 3600 \303\227 2000") << 3600.0 << 2000.0;
    QTest::newRow("comment") << "wall A size 3600 x 2000 # by Ann\r" << 3600.0 << 2000.0;
    QTest::newRow("sums") << "wall A size 10800/3 x 2000" << 3600.0 << 2000.0;
    QTest::newRow("sums-of-units") << "wall A size 3.2 m + 40 cm x (1 + 1) m" << 3600.0 << 2000.0;
    QTest::newRow("sums-in-one-word") << "wall A size 3*1200x2m-0" << 3600.0 << 2000.0;
    QTest::newRow("sum-in-the-unit-of-the-line")
        << "unit m\nwall A size 7.2/2 x 1.5 + 500 mm" << 3600.0 << 2000.0;
    QTest::newRow("three-digits-of-metres") << "wall A size 3,600 m x 2,000 m" << 3600.0 << 2000.0;
    QTest::newRow("three-digits-in-a-file-in-metres") << "unit m\nwall A size 3,600 x 2" << 3600.0 << 2000.0;
    QTest::newRow("zero-before-the-comma") << "unit m\nwall A size 3.6 x 0,500 * 4" << 3600.0 << 2000.0;
    QTest::newRow("upper-case") << "WALL A SIZE 3600 X 2000" << 3600.0 << 2000.0;
}

void tst_zoHPCSurveyReader::lengthsHaveUnits()
{
    QFETCH(QString, text);
    QFETCH(double, width);
    QFETCH(double, height);

    zoHPCSurveyReader reader(none());
    QVERIFY2(reader.read(text), reader.mistakes().empty() ? "" : qPrintable(reader.mistakes().front().text));

    QCOMPARE(reader.survey().walls.at(0).width, width);
    QCOMPARE(reader.survey().walls.at(0).height, height);
    QCOMPARE(reader.survey().measurements.size(), std::size_t(2));
}

void tst_zoHPCSurveyReader::tolerancesAreThoseOfTheLine()
{
    zoHPCSurveyReader reader(none());
    QVERIFY(reader.read(QString::fromUtf8("wall A\nwall B\n"
                                          "distance A.ll B.lr 3 m\n"
                                          "distance A.ll B.lr 3 m \302\261 5\n"
                                          "distance A.ll B.lr 3 m +-1cm\n"
                                          "tolerance 0.5\n"
                                          "distance A.ll B.lr 3 m\n"
                                          "angle A B 90\n"
                                          "tolerance angle 1\n"
                                          "angle A B 90\n"
                                          "angle A B 90 \302\261 0.05\n")));

    std::vector<double> tolerances;
    for (const zoHPCSurvey::Measurement& measurement : reader.survey().measurements)
        tolerances.push_back(measurement.tolerance);
    QCOMPARE(tolerances, (std::vector<double>{2.0, 5.0, 10.0, 0.5, 0.2, 1.0, 0.05}));
}

void tst_zoHPCSurveyReader::linesComeInAnyOrder()
{
    zoHPCSurveyReader reader(none());

    QVERIFY(reader.read(QStringLiteral("front B\ndistance A.ll P 300\npoint P\nwall A\nwall B\n")));

    QCOMPARE(reader.survey().front, 1);
    QCOMPARE(reader.survey().measurements.at(0).text, QStringLiteral("distance A.ll P"));
    QCOMPARE(reader.survey().measurements.at(0).line, 2);
    QCOMPARE(reader.survey().measurements.at(0).to.point, 1);
}

void tst_zoHPCSurveyReader::namesMayHaveBlanks()
{
    zoHPCSurveyReader reader(none());

    QVERIFY(reader.read(QStringLiteral("wall \"Cave Left\" size 3000 x 2000\nfloor \"Cave Left.ll\" 0\n"
                                       "floor \"Cave Left\".ur 2000\n")));

    QCOMPARE(reader.survey().walls.at(0).name, QStringLiteral("Cave Left"));
    QCOMPARE(reader.survey().measurements.at(3).from.wall, 0);
    QCOMPARE(reader.survey().measurements.at(3).from.t, 0.5);
}

void tst_zoHPCSurveyReader::mistakeNamesItsLine_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("mistake");

    const QString walls = QStringLiteral("wall Front size 3 m x 2 m\nwall Left\n");
    QTest::newRow("empty") << "" << 1 << "no wall; a line such as \"wall Front size 3600 x 2000\" is missing";
    QTest::newRow("misspelt-verb") << walls + "distanze Front.ll Left.lr 3" << 3
                                   << "\"distanze\" begins no line; did you mean \"distance\"?";
    QTest::newRow("misspelt-wall") << walls + "upright Frunt" << 3
                                   << "there is no wall \"Frunt\"; did you mean \"Front\"?";
    QTest::newRow("misspelt-place") << walls + "floor Front.bottum 3" << 3
                                    << "there is no place \"Front.bottum\"; did you mean \"Front.bottom\"?";
    QTest::newRow("wall-as-place")
        << walls + "floor Front 3" << 3
        << "where on \"Front\"? Places are Front.ll, .lr, .ul, .ur, .center, .left, "
           ".right, .top and .bottom";
    QTest::newRow("no-length") << walls + "floor Front.ll high" << 3
                               << "\"high\" is no length; one is 3200, 3.2 m or 12 in";
    QTest::newRow("wrong-unit") << walls + "floor Front.ll 3parsec" << 3
                                << "\"3parsec\" is no length; one is 3200, 3.2 m or 12 in";
    QTest::newRow("nan") << walls + "floor Front.ll nan" << 3
                         << "\"nan\" is no length; one is 3200, 3.2 m or 12 in";
    QTest::newRow("infinite") << walls + "floor Front.ll 1e999" << 3
                              << "\"1e999\" is no length; one is 3200, 3.2 m or 12 in";
    QTest::newRow("missing") << walls + "distance Front.ll" << 3 << "a place such as Front.ll is missing";
    QTest::newRow("too-much") << walls + "floor Front.ll 3 m high" << 3 << "\"high\" is not expected here";
    QTest::newRow("twice") << walls + "wall Left" << 3 << "there is a \"Left\" already";
    QTest::newRow("itself") << walls + "join Front.ll Front.ur" << 3
                            << "a wall and a point cannot be joined with themselves";
    QTest::newRow("edge-and-corner") << walls + "join Front.left Left.ur" << 3
                                     << "an edge is joined with an edge, a corner with a corner";
    QTest::newRow("nothing") << walls + "distance Front.ll Left.lr 0" << 3
                             << "a distance is more than 0; places that coincide are told with \"join\"";
    QTest::newRow("angle") << walls + "angle Front Left 400" << 3
                           << "\"400\" is no angle from 0 to 360 degrees";
    QTest::newRow("list") << walls + "points list.csv" << 3
                          << "the point list list.csv cannot be read: no such file";
    QTest::newRow("mark") << walls + "mark 101 Front.ll" << 3 << "\"101\" is in no point list";
    QTest::newRow("control") << walls + QChar(7) << 3 << "a control character; the file is no text";
    QTest::newRow("nul") << walls + QChar(0) << 3 << "a control character; the file is no text";
    QTest::newRow("no-character") << walls + QStringLiteral("wall a\uffff") << 3
                                  << "character 7 is U+FFFF, which no name can have";
    QTest::newRow("other-no-character")
        << walls + QStringLiteral("wall \ufffe") << 3 << "character 6 is U+FFFE, which no name can have";
    QTest::newRow("half-a-character")
        << walls + "wall a" + QChar(0xd83d) << 3 << "character 7 is U+D83D, which no name can have";
    QTest::newRow("mark-of-direction")
        << walls + QStringLiteral("wall a\u202e") << 3 << "character 7 is U+202E, which no name can have";
    QTest::newRow("quote") << walls + "upright \"Front" << 3 << "the quotation mark is not closed";
    QTest::newRow("tiny") << "wall A size 0.5 x 3" << 1 << "a wall is 1 mm wide and high at least";
    QTest::newRow("gaps") << "wall A size 100 x 100 tiles 3x1 gap 50 x 0" << 1
                          << "the gaps leave nothing for the tiles";
    QTest::newRow("overlap-of-a-tile") << "wall A size 100 x 100 tiles 2x1 gap -100 x 0" << 1
                                       << "tiles overlap by more than their own size; a gap below 0 is what "
                                          "they share";
    QTest::newRow("groups") << walls + "floor Front.ll 2,000" << 3
                            << "\"2,000\" may be 2.000 or 2000: write the one that is meant";
    QTest::newRow("groups-with-unit")
        << walls + "floor Front.ll 2,000 mm" << 3
        << "\"2,000 mm\" may be 2.000 mm or 2000 mm: write the one that is meant";
    QTest::newRow("open-sum") << walls + "floor Front.ll 3 +" << 3
                              << "\"3 +\" is no length; one is 3200, 3.2 m or 12 in";
    QTest::newRow("two-numbers") << walls + "floor Front.ll 3 -2" << 3 << "\"-2\" is not expected here";
    QTest::newRow("name-of-a-tile")
        << "wall A size 3 m x 2 m tiles 2x1\nwall \"A row:1 col:2\" size 3 m x 2 m" << 2
        << "\"A row:1 col:2\" is also the name of a tile of \"A\" in line 1: give the wall another name";
    QTest::newRow("two-viewers") << walls + "viewer distance 3\nviewer height 3" << 4
                                 << "there is a line \"viewer\" already";
}

void tst_zoHPCSurveyReader::mistakeNamesItsLine()
{
    QFETCH(QString, text);
    QFETCH(int, line);
    QFETCH(QString, mistake);

    zoHPCSurveyReader reader(none());

    QVERIFY(!reader.read(text));
    QCOMPARE(reader.mistakes().size(), std::size_t(1));
    QCOMPARE(reader.mistakes().front().text, mistake);
    QCOMPARE(reader.mistakes().front().line, line);
}

void tst_zoHPCSurveyReader::mistakesAreNotEndless()
{
    zoHPCSurveyReader reader(none());

    QVERIFY(!reader.read(QStringLiteral("nonsense\n").repeated(1000)));

    QCOMPARE(reader.mistakes().size(), std::size_t(zoHPCSurveyReader::MaximumMistakes));
}

void tst_zoHPCSurveyReader::numbersAtTheLimits_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isGood");

    QTest::newRow("longest") << "wall A size 1000 m x 1000 m" << true;
    QTest::newRow("too-long") << "wall A size 1000.1 m x 1 m" << false;
    QTest::newRow("smallest") << "wall A size 1 x 1" << true;
    QTest::newRow("too-small") << "wall A size 1 x 0.999" << false;
    QTest::newRow("negative") << "wall A size -1 x 3" << false;
    QTest::newRow("tiles") << "wall A size 3 m x 3 m tiles 100x100" << true;
    QTest::newRow("too-many-tiles") << "wall A size 3 m x 3 m tiles 101x100" << false;
    QTest::newRow("no-tiles") << "wall A size 3 m x 3 m tiles 0x1" << false;
    QTest::newRow("part-of-a-tile") << "wall A size 3 m x 3 m tiles 1.5x1" << false;
    QTest::newRow("overlap") << "wall A size 3 m x 3 m tiles 2x1 gap -2999 x 0" << true;
    QTest::newRow("overlap-of-one-tile") << "wall A size 3 m x 3 m tiles 1x1 gap -3000 x 0" << true;
    QTest::newRow("name-like-a-tile") << "wall A tiles 2x1\nwall \"A row:2 col:1\"" << true;
    QTest::newRow("tolerance") << "wall A size 3 m x 3 m +-0.0001" << true;
    QTest::newRow("no-tolerance") << "wall A size 3 m x 3 m +-0" << false;
    QTest::newRow("name-of-pairs") << QStringLiteral("wall \U0001F5A5") << true;
    QTest::newRow("longest-name") << "wall " + QString(100, 'a') << true;
    QTest::newRow("name-too-long") << "wall " + QString(101, 'a') << false;
    QString walls;
    for (int i = 0; i < zoHPCSurvey::MaximumWalls; ++i)
        walls += QStringLiteral("wall %1\n").arg(i);
    QTest::newRow("most-walls") << walls << true;
    QTest::newRow("too-many-walls") << walls + "wall A" << false;
    const QString wall = QStringLiteral("wall A\n");
    const QString line = QStringLiteral("floor A.ll 3\n");
    QTest::newRow("most-measurements") << wall + line.repeated(zoHPCSurvey::MaximumMeasurements) << true;
    QTest::newRow("too-many-measurements")
        << wall + line.repeated(zoHPCSurvey::MaximumMeasurements + 1) << false;
}

void tst_zoHPCSurveyReader::numbersAtTheLimits()
{
    QFETCH(QString, text);
    QFETCH(bool, isGood);

    zoHPCSurveyReader reader(none());

    QCOMPARE(reader.read(text), isGood);
}

void tst_zoHPCSurveyReader::pointListsAreRead_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("commas") << "P,1.5,2.5,3.5\n";
    QTest::newRow("more-columns") << "P,1.5,2.5,3.5,prism,12:30\n";
    QTest::newRow("semicolons") << "P;1,5;2,5;3,5\n";
    QTest::newRow("tabs") << "P\t1.5\t2.5\t3.5\r\n";
    QTest::newRow("blanks") << "  P  1.5  2.5 3.5\n";
    QTest::newRow("blanks-and-commas") << "P 1,5 2,5 3,5\n";
    QTest::newRow("commas-and-blanks") << "P, 1.5, 2.5, 3.5\n";
    QTest::newRow("three-decimals") << "P;1,500;2,500;3,500\nQ;0,100;1;1\n";
    QTest::newRow("quoted") << "\"P\",1.5,2.5,3.5\n";
    QTest::newRow("comment") << "# by Ann\n\nP,1.5,2.5,3.5\n";
    QTest::newRow("header") << "Name,X,Y,Z\nP,1.5,2.5,3.5\n";
    QTest::newRow("other-order") << "No;North [m];East [m];Height [m];Code\nP;2,5;1,5;3,5;k\n";
}

void tst_zoHPCSurveyReader::pointListsAreRead()
{
    QFETCH(QString, text);
    zoHPCSurveyPoints points;

    QVERIFY2(points.read(text, 1000.0, false), qPrintable(points.mistake()));

    QVERIFY2(points.remark().isEmpty(), qPrintable(points.remark()));
    QCOMPARE(points.rows().front().name, QStringLiteral("P"));
    QCOMPARE(points.rows().front().place.x, 1500.0);
    QCOMPARE(points.rows().front().place.y, 3500.0);
    QCOMPARE(points.rows().front().place.z, -2500.0);
}

void tst_zoHPCSurveyReader::pointListsHaveALimit()
{
    const QString text = "wall A\n" + QStringLiteral("points list.csv\n").repeated(zoHPCSurvey::MaximumLists);
    zoHPCSurveyReader reader([](const QString&, QString&, QString&) { return true; });
    QVERIFY(reader.read(text));

    QVERIFY(!reader.read(text + "points list.csv\n"));

    QCOMPARE(reader.mistakes().front().text, QStringLiteral("more than 100 point lists"));
    QCOMPARE(reader.mistakes().front().line, zoHPCSurvey::MaximumLists + 2);
}

// Else the room would not be determined: nothing tells where it stood.
void tst_zoHPCSurveyReader::listsWithoutACornerHaveNoInstrument()
{
    zoHPCSurveyReader reader([](const QString& name, QString& text, QString&) {
        text = name == QLatin1String("first") ? "nobody 1 2 3\n" : "7 1 2 3\nalso 1 2 3\n";
        return true;
    });

    QVERIFY(reader.read("wall A\nmark 7 A.ll\npoints first\npoints second\npoint 8 1 2 3\nmark 8 A.lr\n"));

    const zoHPCSurvey& survey = reader.survey();
    QCOMPARE(survey.unusedPoints, (QStringList{QStringLiteral("nobody"), QStringLiteral("also")}));
    QCOMPARE(survey.instruments.size(), std::size_t(2));
    QCOMPARE(survey.measurements.size(), std::size_t(2));
    QStringList lists;
    for (const zoHPCSurvey::Measurement& measurement : survey.measurements) {
        const zoHPCSurvey::Instrument& instrument = survey.instruments[std::size_t(measurement.instrument)];
        QCOMPARE(instrument.file, measurement.file);
        lists << QStringLiteral("%1 in line %2").arg(instrument.file).arg(instrument.line);
    }
    QCOMPARE(lists, (QStringList{QStringLiteral("second in line 4"), QStringLiteral(" in line 0")}));
}

void tst_zoHPCSurveyReader::pointListMistakes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("mistake");

    QTest::newRow("too-few") << "P,1,2,3\nQ,1,2\n"
                             << 2 << "a name and three coordinates were expected: name,east,north,height";
    QTest::newRow("nan") << "P,1,2,nan\n" << 1 << "\"nan\" is no coordinate";
    QTest::newRow("no-name") << ",1,2,3\n" << 1 << "the point's name is missing or too long";
    QTest::newRow("control") << QString("P,1,2,3\nQ,1,2,3") + QChar(27) << 2
                             << "a control character; the file is no text";
    QTest::newRow("groups")
        << "P;1;2;3\nQ;1;2,000;3\n"
        << 2
        << "\"2,000\" may be 2.000 or 2000: write numbers with a point, without separated "
           "groups";
    QTest::newRow("decimal-commas-between-commas")
        << "P,1,500,2,500,3,500\n"
        << 1
        << "6 whole numbers; where the comma is a decimal mark, separate cells by semicolons, otherwise name "
           "the columns in a first line: name,east,north,height";
    QTest::newRow("more-cells-than-titles") << "name,x,y,z\nP,1,5,2,5,3,5\n"
                                            << 2
                                            << "7 cells under 4 titles; where the comma is a decimal mark, "
                                               "separate cells by semicolons";
    QTest::newRow("groups-and-points") << "P;1;2,500.5;3\n" << 1 << "\"2,500.5\" is no coordinate";
    QTest::newRow("too-large") << "P,1,2,1e20\n" << 1 << "\"1e20\" is too large a coordinate";
}

void tst_zoHPCSurveyReader::pointListMistakes()
{
    QFETCH(QString, text);
    QFETCH(int, line);
    QFETCH(QString, mistake);

    zoHPCSurveyReader reader([&](const QString&, QString& list, QString&) {
        list = text;
        return true;
    });

    QVERIFY(!reader.read(QStringLiteral("wall A\npoints list.csv\n")));
    QCOMPARE(reader.mistakes().size(), std::size_t(1));
    QCOMPARE(reader.mistakes().front().file, QStringLiteral("list.csv"));
    QCOMPARE(reader.mistakes().front().line, line);
    QCOMPARE(reader.mistakes().front().text, mistake);
}

void tst_zoHPCSurveyReader::threeDigitsBehindACommaAreTold_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("told"); // remarks; none for a list that is refused

    const QString remark =
        "\"2,000\" is read as 2.000; should it be 2000, write numbers without separated groups";
    QTest::newRow("metres") << "P;1;2;3\nQ;1;2,000;3"
                            << "m" << remark;
    QTest::newRow("feet") << "P;1;2;3\nQ;1;2,000;3"
                          << "ft" << remark;
    QTest::newRow("another-number-decides") << "P;1,5;2;3\nQ;1;2,000;3"
                                            << "mm"
                                            << "";
    QTest::newRow("a-later-number-decides") << "P;1;2;3\nQ;1;2,000;3\nR;1;0,250;1"
                                            << "m"
                                            << "";
    QTest::newRow("points") << "P;1.5;2;3\nQ;1;2,000;3"
                            << "m" << QString();
    QTest::newRow("millimetres") << "P;1;2;3\nQ;1;2,000;3"
                                 << "mm" << QString();
}

void tst_zoHPCSurveyReader::threeDigitsBehindACommaAreTold()
{
    QFETCH(QString, list);
    QFETCH(QString, unit);
    QFETCH(QString, told);
    zoHPCSurveyReader reader([&](const QString&, QString& text, QString&) {
        text = list;
        return true;
    });

    QCOMPARE(reader.read(QStringLiteral("wall A\npoints list.csv unit ") + unit), !told.isNull());

    const std::vector<zoHPCSurvey::Remark>& remarks = reader.survey().remarks;
    QCOMPARE(remarks.size(), std::size_t(told.isEmpty() ? 0 : 1));
    for (const zoHPCSurvey::Remark& remark : remarks) {
        QCOMPARE(remark.text, told);
        QCOMPARE(remark.file, QStringLiteral("list.csv"));
        QCOMPARE(remark.line, 2);
    }
    if (told.isNull())
        QCOMPARE(reader.mistakes().front().line, 2);
}

void tst_zoHPCSurveyReader::hostileTextEnds_data()
{
    QTest::addColumn<QString>("text");

    constexpr int Size = 1024 * 1024;
    QTest::newRow("one-line") << QString(Size, 'a');
    QTest::newRow("one-word-lines") << QStringLiteral("wall\n").repeated(Size / 5);
    QTest::newRow("digits") << "wall A size " + QString(Size, '9');
    QTest::newRow("quotes") << QString(Size, '"');
    QTest::newRow("line-ends") << QString(Size, '\n');
    QTest::newRow("dots") << "wall A\nfloor A" + QString(Size, '.') + "ll 3";
    QTest::newRow("sizes") << "wall A size " + QStringLiteral("1x").repeated(Size / 2);
    QTest::newRow("marks") << "wall A\n" + QStringLiteral("mark a b\n").repeated(Size / 9);
    QString circle = QStringLiteral("wall A\npoint a 1 2 3\npoint b 1 2 3\nmark a b\nmark b a\nfloor a 3\n");
    QTest::newRow("marks-in-a-circle") << circle;
    std::mt19937 random(7);
    QString noise;
    for (int i = 0; i < Size; ++i)
        noise += QChar(ushort(random() % 0xd800));
    QTest::newRow("noise") << noise;
}

void tst_zoHPCSurveyReader::hostileTextEnds()
{
    QFETCH(QString, text);
    zoHPCSurveyReader reader(none());

    QVERIFY(!reader.read(text));

    QVERIFY(!reader.mistakes().empty());
    for (const zoHPCSurveyReader::Mistake& mistake : reader.mistakes())
        QVERIFY2(mistake.text.size() < 400, qPrintable(QString::number(mistake.text.size())));
}

ZO_TEST_MAIN(tst_zoHPCSurveyReader)
#include "tst_zoHPCSurveyReader.moc"
