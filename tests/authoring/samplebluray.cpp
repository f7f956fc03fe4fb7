// SPDX-License-Identifier: GPL-2.0-or-later
//
// sample-bluray FOLDER NAME STREAM…
// Makes a Blu-ray folder called NAME of stream files: a title that plays them all, a chapter each,
// and a title for each.
#include "bluraywriter.h"

#include <QtCore/QString>

#include <cstdio>

int main(int count, char** arguments)
{
    if (count < 4) {
        std::fputs("usage: sample-bluray FOLDER NAME STREAM...\n", stderr);
        return 2;
    }
    const authoring::Disc disc(QString::fromLocal8Bit(arguments[1]));
    disc.setName(arguments[2]);
    QList<authoring::Item> all;
    QList<authoring::Mark> chapters;
    for (int i = 3; i < count; ++i) {
        const QString name = QStringLiteral("%1").arg(i - 2, 5, 10, QLatin1Char('0'));
        const auto clip = disc.addStream(name, QString::fromLocal8Bit(arguments[i]));
        const authoring::Item item{name.toLatin1(), clip.sequences[0].start, clip.sequences[0].end};
        chapters.append({quint16(all.size()), item.in});
        all.append(item);
        disc.addPlaylist(name, {item}, {{0, item.in}});
    }
    disc.addPlaylist(QStringLiteral("00000"), all, chapters);
    return 0;
}
