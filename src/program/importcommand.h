// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QtGlobal>

struct Options;

/// Imports as `options` say and shows what came of it; the program's exit status. The plug-in is
/// loaded and initialized. By this plain name the program finds it.
extern "C" Q_DECL_EXPORT int vspimportRun(const Options& options);
