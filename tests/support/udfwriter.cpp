// SPDX-License-Identifier: GPL-2.0-or-later
//
// Numbers of descriptors and layouts are those of ECMA-167, 3rd edition, and of UDF 2.50. What
// nobody reads is left out, or zero.
#include "udfwriter.h"

#include "bytewriter.h"
#include "files.h"

namespace {

constexpr int blockSize = 2048;

// Blocks of the image.
constexpr quint32 sequenceAt = 32;
constexpr quint32 reserveSequenceAt = 48;
constexpr quint32 anchorAt = 256;
constexpr quint32 partitionAt = 288;

// Blocks of the partition; the metadata file's contents are the metadata partition.
constexpr quint32 metadataFileAt = 0;
constexpr quint32 metadataMirrorAt = 1;
constexpr quint32 metadataAt = 32;
constexpr quint32 metadataBlocks = 512;

constexpr int dataPartition = 0;
constexpr int metadataPartition = 1;

constexpr int folderKind = 4;
constexpr int fileKind = 5;

/// Files up to the one size lie in their entries, those above the other in two extents with a list
/// of further extents between them.
constexpr int largestInside = 1000;
constexpr int largestWhole = 64 * 1024;
constexpr int firstExtent = 2 * blockSize;

/// How the contents of a file are allocated.
enum Allocation
{
    NarrowExtents = 0, ///< within the entry's partition
    WideExtents = 1,
    Inside = 3 ///< in the entry itself
};

quint32 blocksOf(int bytes)
{
    return quint32((bytes + blockSize - 1) / blockSize);
}

class Writer : public ByteWriter<Writer, false>
{
public:
    /// A text in a field of that width.
    Writer& string(const QByteArray& latin1, int width)
    {
        return u8(8).bytes(latin1.leftJustified(width - 2, '\0', true)).u8(latin1.size() + 1);
    }
    Writer& identifier(const QByteArray& name) { return u8(0).bytes(name.leftJustified(31, '\0')); }
    Writer& extent(int length, quint32 block) { return u32(quint32(length)).u32(block); }
    Writer& place(quint32 length, quint32 block, int partition)
    {
        return u32(length).u32(block).u16(partition).zeros(6);
    }
};

/// The body with its tag before it.
QByteArray descriptor(int kind, quint32 location, const Writer& body)
{
    const auto tag = [&](int checksum) {
        return Writer().u16(kind).u16(3).u8(checksum).zeros(7).u32(location).result();
    };
    int sum = 0;
    for (const char c : tag(0))
        sum += quint8(c);
    return tag(sum & 0xFF) + body.result();
}

/// A line of a folder; that without a name leads to the folder above.
QByteArray fileIdentifier(const QString& name, bool isFolder, quint32 entryAt)
{
    const bool isNarrow = QString::fromLatin1(name.toLatin1()) == name;
    QByteArray id = isNarrow ? '\x08' + name.toLatin1() : QByteArray("\x10");
    for (int i = 0; i < name.size() && !isNarrow; ++i)
        id.append(char(name[i].unicode() >> 8)).append(char(name[i].unicode() & 0xFF));
    if (name.isEmpty())
        id.clear();
    Writer body;
    body.u16(1).u8((isFolder ? 2 : 0) | (name.isEmpty() ? 8 : 0)).u8(id.size());
    body.place(blockSize, entryAt, metadataPartition).u16(0).bytes(id);
    return descriptor(257, 0, body.zeros((4 - (38 + id.size()) % 4) % 4));
}

/// `allocation` holds the extents, or the contents. All but ordinary files have extended entries.
QByteArray fileEntry(int kind, int size, const QByteArray& allocation, Allocation allocationKind)
{
    const bool isExtended = kind != fileKind;
    Writer body;
    body.u32(0).u16(4).u16(0).u16(1).u8(0).u8(kind).zeros(6).u16(allocationKind).zeros(20);
    body.u64(quint64(size)).zeros(isExtended ? 144 : 104);
    body.u32(0).u32(quint32(allocation.size())).bytes(allocation);
    return descriptor(isExtended ? 266 : 261, 0, body);
}

class ImageWriter
{
public:
    ImageWriter(const QString& image, const QByteArray& volumeName)
        : m_file(image)
        , m_volumeName(volumeName)
    {
        if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            qFatal("%s cannot be written", qPrintable(image));
    }

    void write(const QString& folder)
    {
        const quint32 rootAt = m_nextMetadata;
        writeFolder(folder, rootAt);
        writeBlock(16, Writer().u8(0).bytes("BEA01").u8(1).result());
        writeBlock(17, Writer().u8(0).bytes("NSR03").u8(1).result());
        writeBlock(18, Writer().u8(0).bytes("TEA01").u8(1).result());
        for (const quint32 at : {sequenceAt, reserveSequenceAt})
            writeSequence(at);
        writeMetadataFile(250, metadataFileAt);
        writeMetadataFile(251, metadataMirrorAt);
        Writer fileSet;
        fileSet.zeros(384).place(blockSize, rootAt, metadataPartition).zeros(96);
        writeMetadata(0, descriptor(256, 0, fileSet));
        for (const quint32 at : {anchorAt, partitionAt + m_nextData}) {
            Writer body;
            body.extent(16 * blockSize, sequenceAt).extent(16 * blockSize, reserveSequenceAt);
            writeBlock(at, descriptor(2, at, body.zeros(480)));
        }
    }

private:
    void writeBlock(quint32 block, const QByteArray& bytes)
    {
        m_file.seek(qint64(block) * blockSize);
        m_file.write(bytes.leftJustified(int(blocksOf(bytes.size())) * blockSize, '\0'));
    }
    void writeMetadata(quint32 block, const QByteArray& bytes)
    {
        if (block >= metadataBlocks)
            qFatal("too many files");
        writeBlock(partitionAt + metadataAt + block, bytes);
    }

    /// The description of the volume.
    void writeSequence(quint32 at)
    {
        Writer primary;
        writeBlock(at, descriptor(1, at, primary.zeros(8).string(m_volumeName, 32).zeros(440)));
        Writer partition;
        partition.u32(2).u16(1).u16(dataPartition).identifier("+NSR03").zeros(132);
        partition.u32(partitionAt).u32(m_nextData).zeros(316);
        writeBlock(at + 1, descriptor(5, at + 1, partition));
        Writer maps;
        maps.u8(1).u8(6).u16(1).u16(dataPartition);
        maps.u8(2).u8(64).zeros(2).identifier("*UDF Metadata Partition").u16(1).u16(dataPartition);
        maps.u32(metadataFileAt).u32(metadataMirrorAt).u32(~0u).u32(32).u16(32).zeros(6);
        Writer volume;
        volume.u32(3).zeros(64).string(m_volumeName, 128).u32(blockSize);
        volume.identifier("*OSTA UDF Compliant").place(blockSize, 0, metadataPartition);
        volume.u32(quint32(maps.result().size())).u32(2).zeros(168).bytes(maps.result());
        writeBlock(at + 2, descriptor(6, at + 2, volume));
        writeBlock(at + 3, descriptor(8, at + 3, Writer().zeros(496)));
    }

    void writeMetadataFile(int kind, quint32 at)
    {
        const int size = metadataBlocks * blockSize;
        writeBlock(
            partitionAt + at,
            fileEntry(kind, size, Writer().extent(size, metadataAt).result(), NarrowExtents));
    }

    /// Writes what is in the folder, and the folder; the block of its entry.
    quint32 writeFolder(const QString& path, quint32 parentAt)
    {
        const quint32 entryAt = m_nextMetadata++;
        QByteArray lines = fileIdentifier(QString(), true, parentAt);
        const auto filter = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
        for (const QFileInfo& child : QDir(path).entryInfoList(filter, QDir::Name)) {
            const quint32 at = child.isDir() ? writeFolder(child.filePath(), entryAt)
                                             : writeFile(contentOf(child.filePath()));
            lines += fileIdentifier(child.fileName(), child.isDir(), at);
        }
        const QByteArray extent = Writer().extent(lines.size(), m_nextMetadata).result();
        writeMetadata(entryAt, fileEntry(folderKind, lines.size(), extent, NarrowExtents));
        writeMetadata(m_nextMetadata, lines);
        m_nextMetadata += blocksOf(lines.size());
        return entryAt;
    }

    quint32 writeFile(const QByteArray& content)
    {
        const bool isInside = content.size() <= largestInside;
        const quint32 at = m_nextMetadata++;
        writeMetadata(at, fileEntry(fileKind, content.size(),
                                    isInside ? content : writeContents(content),
                                    isInside ? Inside : WideExtents));
        return at;
    }

    /// The extents, as the file's entry lists them.
    QByteArray writeContents(const QByteArray& content)
    {
        if (content.size() <= largestWhole)
            return writeExtent(content);
        QByteArray extents = writeExtent(content.left(firstExtent));
        const quint32 listAt = m_nextData++;
        const quint32 isList = 3u << 30;
        extents += Writer().place(isList | blockSize, listAt, dataPartition).result();
        const QByteArray rest = writeExtent(content.mid(firstExtent));
        writeBlock(partitionAt + listAt,
                   descriptor(258, listAt, Writer().u32(0).u32(quint32(rest.size())).bytes(rest)));
        return extents;
    }

    QByteArray writeExtent(const QByteArray& content)
    {
        const quint32 at = m_nextData;
        writeBlock(partitionAt + at, content);
        m_nextData += blocksOf(content.size());
        return Writer().place(quint32(content.size()), at, dataPartition).result();
    }

    QFile m_file;
    QByteArray m_volumeName;
    quint32 m_nextMetadata = 2; ///< behind the description of the file set
    quint32 m_nextData = metadataAt + metadataBlocks;
};

} // namespace

void writeUdfImage(const QString& folder, const QString& image, const QByteArray& volumeName)
{
    ImageWriter(image, volumeName).write(folder);
}
