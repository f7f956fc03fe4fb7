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

inline QStringList namesOf(AVBased::IBDList* list)
{
    QStringList names;
    for (quint32 i = 0; i < list->count(); ++i)
        names << QString::fromUtf8(list->item(i)->name());
    return names;
}

inline QStringList titleNames(const LoaderPtr& loader)
{
    return namesOf(ListPtr(loader->titleList()).get());
}

inline QString fileName(const char* path)
{
    return QString::fromUtf8(path).section('/', -1);
}

/// A clip of `seconds`, whose time stamps begin at `start` seconds.
inline authoring::Clip plainClip(quint32 start, quint32 seconds)
{
    authoring::Clip clip;
    clip.sequences = {{0, start * authoring::second, (start + seconds) * authoring::second}};
    clip.streams = authoring::usualStreams();
    return clip;
}
