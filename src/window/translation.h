// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

/// Installs the translations of the window's texts and of Qt's for the language of the desktop, as
/// far as there are any. Once, when the application is there.
void installTranslations();
