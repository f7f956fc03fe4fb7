// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QFile>
#include <QtCore/QString>

namespace Vesk {

/// A new file in the folder of the one whose place it takes.
///
/// It is made under a random name that was nobody's, so that neither another import's file nor one
/// that a planted link leads to is written to. Those may read it whom the process lets read its
/// files; a QTemporaryFile would be its owner's alone. It goes with the object unless it has taken
/// its place.
class ReplacingFile
{
public:
    /// Makes the file in `folder`, which exists.
    explicit ReplacingFile(const QString& folder);
    ~ReplacingFile();

    /// Writes the whole content. False when not all of it could be written.
    bool write(const QByteArray& content);

    /// Puts the file at `path`, in one step and instead of what is there; a link is replaced, not
    /// followed.
    bool moveTo(const QString& path);

    /// Removes the files that processes which were killed left in `folder` more than a day ago.
    static void removeLeftovers(const QString& folder);

private:
    QString m_path; ///< empty when there is no file any more
    QFile m_file;

    Q_DISABLE_COPY(ReplacingFile)
};

} // namespace Vesk
