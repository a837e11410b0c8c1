#pragma once

#include <QDir>
#include <QFile>
#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QTest>

#include <algorithm>

// The set-ups of Tests/Data/Catalogue: walls as sites have them and mistakes as people make them. The first line of
// each file tells what it is; a comment at the end of a line tells what has to be said of the element that begins
// there, as in
//     <projection .../> <!-- says: tile-shown-nowhere "Wall row:3 col:3", tile-shown-twice -->
// with the name that the message has to hold where one element stands for many items. "in-text:CODE" after a code is
// what is said in its place of the text of a file, which holds more than its items. Of all else nothing may be said.
struct zoCatalogue
{
    struct Saying
    {
        int line = 0;
        QString code;
        QString textCode; // of the text of a file
        QString name;     // empty when the message may hold any
    };

    struct Setup
    {
        QString name;
        QString path;
        QByteArray text;
        QString what;
        QList<Saying> sayings;
    };

    static QList<Setup> setups()
    {
        QList<Setup> result;
        const QDir folder(QStringLiteral(ZO_TEST_DATA_DIR "/Catalogue"));
        for (const QString& file : folder.entryList({QStringLiteral("*.zhpc")}, QDir::Files, QDir::Name))
            result << read(folder.filePath(file), file.chopped(5));
        return result;
    }

    // One row for each set-up, with the column "index".
    static void addRows()
    {
        QTest::addColumn<int>("index");
        const QList<Setup> all = setups();
        for (int i = 0; i < all.size(); ++i)
            QTest::newRow(qPrintable(all.at(i).name)) << i;
    }

private:
    static Setup read(const QString& path, const QString& name)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qPrintable(path));
        Setup setup{name, path, file.readAll(), QString(), {}};
        const QStringList lines = QString::fromUtf8(setup.text).split('\n');
        setup.what = comment(lines.first());
        static const QRegularExpression s_saying(
            QStringLiteral("([a-z-]+)(?: in-text:([a-z-]+))?(?: \"([^\"]*)\")?(?:, |$)"));
        for (int i = 1; i < lines.size(); ++i) {
            const QString says = comment(lines.at(i));
            if (!says.startsWith(QLatin1String("says: ")))
                continue;
            QRegularExpressionMatchIterator match = s_saying.globalMatch(says.mid(6));
            while (match.hasNext()) {
                const QRegularExpressionMatch one = match.next();
                const QString code = one.captured(1);
                setup.sayings << Saying{i + 1, code, one.captured(2).isEmpty() ? code : one.captured(2),
                                        one.captured(3)};
            }
        }
        return setup;
    }

    static QString comment(const QString& line)
    {
        const int begin = line.indexOf(QLatin1String("<!-- "));
        const int end = line.indexOf(QLatin1String(" -->"));
        return begin < 0 || end < begin ? QString() : line.mid(begin + 5, end - begin - 5);
    }
};
