// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QtGlobal>

#ifdef VSPBASED_BUILD
#define VSPBASED_EXPORT Q_DECL_EXPORT
#else
#define VSPBASED_EXPORT Q_DECL_IMPORT
#endif
