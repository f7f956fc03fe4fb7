// SPDX-License-Identifier: GPL-2.0-or-later
//
// make-blurays FOLDER DISCS PLAYLISTS CLIPS FILES
// Makes Blu-ray discs of navigation alone, without stream files: so many discs, each with so many
// playlists of so many clips over so many stream files, and a chapter with every clip.
#include "bluraywriter.h"

#include <QtCore/QDir>

#include <cstdio>

using authoring::second;

namespace {

QString numbered(int number)
{
    return QString::fromLatin1("%1").arg(number, 5, 10, QLatin1Char('0'));
}

/// An hour with an entry point every half second.
authoring::Clip hourOfFilm()
{
    authoring::Clip clip;
    clip.sequences = {{0, 10 * second, 3610 * second}};
    clip.streams = authoring::usualStreams();
    for (quint32 i = 0; i < 7200; ++i)
        clip.entryPoints.append({(10 * second + i * second / 2) * 2, i * 9000});
    return clip;
}

void makeDisc(const QString& folder, int playlists, int clips, int files)
{
    const authoring::Disc disc(folder);
    const authoring::Clip clip = hourOfFilm();
    for (int i = 0; i < files; ++i)
        disc.addClip(numbered(i), clip);
    for (int i = 0; i < playlists; ++i) {
        QList<authoring::Item> items;
        QList<authoring::Mark> marks;
        for (int j = 0; j < clips; ++j) {
            const quint32 in = quint32(10 + (i * 7 + j) % 3500) * second;
            items.append({numbered((i + j) % files).toLatin1(), in, in + 60 * second});
            marks.append({quint16(j), in});
        }
        disc.addPlaylist(numbered(i), items, marks);
    }
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 6) {
        std::fputs("usage: make-blurays FOLDER DISCS PLAYLISTS CLIPS FILES\n", stderr);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(arguments[1]));
    for (int i = 0; i < atoi(arguments[2]); ++i) {
        makeDisc(folder.filePath(QString::fromLatin1("disc-%1").arg(i)), atoi(arguments[3]),
                 atoi(arguments[4]), qMax(atoi(arguments[5]), 1));
    }
    return 0;
}
