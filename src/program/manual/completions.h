// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QByteArray>

/// What completes the program's command line in each shell.
QByteArray bashCompletion();
QByteArray zshCompletion();
QByteArray fishCompletion();
