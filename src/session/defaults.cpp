// SPDX-License-Identifier: GPL-2.0-or-later
#include "defaults.h"

#include <QtCore/QDir>
#include <QtCore/QStandardPaths>

namespace defaults {

const char* const formats =
    "*.3g2;*.3gp;*.aac;*.ac3;*.aif;*.aiff;*.amr;*.ape;*.asf;*.au;*.avi;*.caf;*.divx;*.dts;*.dv;"
    "*.eac3;*.f4v;*.flac;*.flv;*.gif;*.gxf;*.h264;*.h265;*.hevc;*.ivf;*.m1v;*.m2t;*.m2ts;*.m2v;"
    "*.m4a;*.m4b;*.m4v;*.mka;*.mkv;*.mod;*.mov;*.mp2;*.mp3;*.mp4;*.mpa;*.mpc;*.mpeg;*.mpg;*.mpv;"
    "*.mts;*.mxf;*.nut;*.oga;*.ogg;*.ogm;*.ogv;*.opus;*.qt;*.ra;*.rm;*.rmvb;*.spx;*.tak;*.thd;"
    "*.tod;*.tp;*.trp;*.ts;*.tta;*.vob;*.voc;*.w64;*.wav;*.webm;*.wma;*.wmv;*.wtv;*.wv;*.y4m;";

QString pictureFolder()
{
    QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    if (QDir::isRelativePath(cache)) // XDG_CACHE_HOME counts only if it is absolute
        cache = QDir::homePath() + QStringLiteral("/.cache");
    return cache + QStringLiteral("/vspimport/snapshots");
}

} // namespace defaults
