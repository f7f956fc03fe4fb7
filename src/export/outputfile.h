// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QFileDevice>
#include <QtCore/QString>

#include <memory>

/// A file that results are written to, opened before there are any, so that one that cannot be
/// written is found out first.
class OutputFile
{
public:
    enum Mode
    {
        Replacing, ///< written beside its place, which it gets at commit()
        Growing    ///< written in its place, for others to read along
    };

    /// Opens `name`; "-" is standard output, and pipes and devices are written to as they are.
    /// False, with the reason in one line in `error`, when it cannot be written.
    bool open(const QString& name, Mode mode, QString& error);

    bool isOpen() const { return bool(m_file); }
    QIODevice& device() { return *m_file; }

    /// Writes `text` so that others see it. False, once and for all, when it cannot be written.
    bool write(const QByteArray& text);

    /// Ends the writing. False, with the reason in `error`, when something has not been written.
    bool commit(QString& error);

private:
    QString m_name;
    std::unique_ptr<QFileDevice> m_file;
    bool m_hasFailed = false;
};

/// Makes `folder` if need be. The reason when files cannot be written there; else empty.
QString reasonAgainstWriting(const QString& folder);
