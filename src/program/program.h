// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

/// The program, once the engine is on its way; its exit status.
extern "C" __attribute__((visibility("default"))) int vspimportMain(int argc, char** argv);
