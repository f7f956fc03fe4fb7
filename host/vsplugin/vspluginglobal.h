// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QtGlobal>

#ifdef VSPLUGIN_BUILD
#define VSPLUGIN_EXPORT Q_DECL_EXPORT
#else
#define VSPLUGIN_EXPORT Q_DECL_IMPORT
#endif
