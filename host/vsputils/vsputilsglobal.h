// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QtGlobal>

#ifdef VSPUTILS_BUILD
#define VSPUTILS_EXPORT Q_DECL_EXPORT
#else
#define VSPUTILS_EXPORT Q_DECL_IMPORT
#endif
