// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The import module's classes, as a host uses them:
//
//   CImportContext   settings of the whole process; instance() after the plug-in's initialize()
//   CImportSource    what to import and what for; filled by the host
//   CImportModel     open(source) starts an import and returns its CImportReply; collects errors
//   CImportReply     one running import: signals, tasks, exit(), wait(); deleted by the host
//   CImportTask      one importable item with its information tree; owned and deleted by the host
//
// Threads: the host calls everything from one thread of its own. Each reply works on a thread of
// its own, from which all its signals but finished() and terminated() come; one import runs at a
// time in the process. Tasks and their trees belong to that thread, which ends with the import, and
// are not locked: until finished(), a host reads of them only what the signals' documentation says.
// From finished() until the reply is deleted they still belong to the thread that has ended: an
// object made then with one of them as its parent, as CDVDTitle::setSubtitleCount() makes, is left
// without a parent by Qt. Afterwards they belong to no thread, and their new children to theirs.
#pragma once

#include <QtCore/QtGlobal>

#ifdef VSPIMPORT_BUILD
#define VSPIMPORT_EXPORT Q_DECL_EXPORT
#else
#define VSPIMPORT_EXPORT Q_DECL_IMPORT
#endif
