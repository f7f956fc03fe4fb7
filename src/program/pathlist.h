// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>

/// Appends the paths in `fileName`, each ended by `end`; "-" is standard input. Empty ones are
/// passed over. False, with the reason in one line in `error`, when it cannot be read.
bool readPathList(const QString& fileName, char end, QList<QByteArray>& paths, QString& error);
