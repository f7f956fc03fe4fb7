// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QtEndian>

/// Puts numbers and texts one behind another. `Self` is the class that adds to it.
template <typename Self, bool isBigEndian>
class ByteWriter
{
public:
    Self& u8(int value) { return number(quint8(value)); }
    Self& u16(int value) { return number(quint16(value)); }
    Self& u32(quint32 value) { return number(value); }
    Self& u64(quint64 value) { return number(value); }
    Self& zeros(int count) { return bytes(QByteArray(count, '\0')); }
    Self& bytes(const QByteArray& bytes)
    {
        m_bytes.append(bytes);
        return static_cast<Self&>(*this);
    }

    const QByteArray& result() const { return m_bytes; }

private:
    template <typename T>
    Self& number(T value)
    {
        const T swapped = isBigEndian ? qToBigEndian(value) : qToLittleEndian(value);
        return bytes(QByteArray(reinterpret_cast<const char*>(&swapped), sizeof(T)));
    }

    QByteArray m_bytes;
};
