// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QString>

namespace AVBased {
struct AVMovieInfo;
}

namespace Vesk {

class CImportTask;
class CMovieInfomation;

/// Opens the media file at `path` and describes it in a new task, which the caller owns. Null when
/// the engine cannot open it, or when it is protected and the context does not allow that.
CImportTask* probeMediaFile(const QString& path);

/// Copies the engine's description of one movie. False, with nothing changed, when a pointer is
/// null.
bool copyMovieInfo(const AVBased::AVMovieInfo* record, CMovieInfomation* info);

} // namespace Vesk
