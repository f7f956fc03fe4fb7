// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QtGlobal>

class QIODevice;

namespace Vesk {

struct ImportErrorRecord;

/// Writes one block of the binary error report to a device that can seek. Everything is
/// little-endian and as Qt 4.8's data stream writes it:
///
///   "IMPM"   int32 0   uint32 length of the rest   date and time of writing   records
///
/// A record is the int32 type, the path and, for a failed import, the first bytes of the file (the
/// single character "0" when it cannot be read).
class ErrorReportBlock
{
public:
    /// Writes the head of the block where `device` stands.
    explicit ErrorReportBlock(QIODevice* device);

    void append(const ImportErrorRecord& record);

    /// Fills in the length. The device then stands right behind it.
    void finish();

private:
    QIODevice* m_device;
    qint64 m_lengthPosition;
};

} // namespace Vesk
