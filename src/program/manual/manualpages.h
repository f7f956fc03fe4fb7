// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>

/// vspimport(1): the program.
QByteArray programPage();

/// vspimport(5): what it writes, by the schema of its output.
QByteArray formatPage(const QJsonObject& schema);
