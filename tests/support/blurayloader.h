// SPDX-License-Identifier: GPL-2.0-or-later
//
// Blu-ray discs as the engine's loader gives them, in short.
#pragma once

#include "bluraywriter.h"
#include "engineobjects.h"

#include <QtCore/QDir>
#include <QtCore/QStringList>

inline LoaderPtr openDisc(const QString& path)
{
    LoaderPtr loader(engineWrapper()->createBDLoader());
    return loader->open(path.toUtf8().constData()) ? std::move(loader) : LoaderPtr();
}

/// The names that a list holds, which is released.
inline QStringList namesOf(AVBased::IBDList* list)
{
    const ListPtr owner(list);
    QStringList names;
    for (quint32 i = 0; i < list->count(); ++i)
        names << QString::fromUtf8(list->item(i)->name());
    return names;
}

inline const AVBased::AVMovieInfo* streamFile(const LoaderPtr& loader, const QString& path)
{
    return loader->fileMovieInfo(path.toUtf8().constData());
}

/// A clip of `seconds`, whose time stamps begin at `start` seconds.
inline authoring::Clip plainClip(quint32 start, quint32 seconds)
{
    return {{{0, start * authoring::second, (start + seconds) * authoring::second}},
            authoring::usualStreams(),
            {}};
}
