// SPDX-License-Identifier: GPL-2.0-or-later
//
// Numbers of descriptors and layouts are those of ECMA-167, 3rd edition, and of UDF 2.50.
#include "udfwriter.h"

#include "bytewriter.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <memory>
#include <vector>

namespace {

constexpr int blockSize = 2048;
constexpr int revision = 0x0250;

// Blocks of the image.
constexpr quint32 sequenceAt = 32;
constexpr quint32 reserveSequenceAt = 48;
constexpr quint32 integrityAt = 64;
constexpr quint32 anchorAt = 256;
constexpr quint32 partitionAt = 288;

// Blocks of the partition; the metadata file's contents are the metadata partition.
constexpr quint32 metadataFileAt = 0;
constexpr quint32 metadataMirrorAt = 1;
constexpr quint32 metadataAt = 32;

constexpr int folderKind = 4;
constexpr int fileKind = 5;

/// Files up to the one size lie in their entries, those above the other in two extents with a list
/// of further extents between them.
constexpr qint64 largestInside = 1000;
constexpr qint64 largestWhole = 64 * 1024;
constexpr quint32 firstExtent = 2 * blockSize;

constexpr int dataPartition = 0;
constexpr int metadataPartition = 1;

quint32 blocksOf(qint64 bytes)
{
    return quint32((bytes + blockSize - 1) / blockSize);
}

class Writer : public ByteWriter<Writer, false>
{
public:
    Writer& padded(const QByteArray& text, int width)
    {
        return bytes(text.leftJustified(width, '\0', true));
    }
    Writer& characterSet() { return u8(0).padded("OSTA Compressed Unicode", 63); }
    Writer& string(const QByteArray& latin1, int width)
    {
        return u8(8).padded(latin1, width - 2).u8(latin1.size() + 1);
    }
    Writer& identifier(const QByteArray& name, int suffix = 0)
    {
        return u8(0).padded(name, 23).u16(suffix).zeros(6);
    }
    Writer& domain() { return identifier("*OSTA UDF Compliant", revision); }
    Writer& implementation() { return identifier("*vspimport tests"); }
    Writer& time() { return u16(0x1000).u16(2020).u8(1).u8(1).zeros(6); }
    Writer& extent(quint32 length, quint32 block) { return u32(length).u32(block); }
    Writer& place(quint32 length, quint32 block, int partition)
    {
        return u32(length).u32(block).u16(partition).zeros(6);
    }
};

quint16 crc(const QByteArray& bytes)
{
    quint16 value = 0;
    for (const char c : bytes) {
        value ^= quint16(quint8(c) << 8);
        for (int bit = 0; bit < 8; ++bit)
            value = quint16(value & 0x8000 ? value << 1 ^ 0x1021 : value << 1);
    }
    return value;
}

/// The body with its tag before it.
QByteArray descriptor(int kind, quint32 location, const Writer& body)
{
    const auto tag = [&](int checksum) {
        Writer bytes;
        bytes.u16(kind).u16(3).u8(checksum).u8(0).u16(1);
        return bytes.u16(crc(body.result())).u16(body.result().size()).u32(location).result();
    };
    int sum = 0;
    for (const char c : tag(0))
        sum += quint8(c);
    return tag(sum & 0xFF) + body.result();
}

/// A file or folder of the tree.
struct Node
{
    QString name;
    QString path;
    bool isFolder = false;
    qint64 size = 0;
    quint32 entryAt = 0; ///< block of its file entry in the metadata partition
    quint32 dataAt = 0;  ///< block of its contents: a folder's in the metadata partition, too
    std::vector<std::unique_ptr<Node>> children;
};

std::unique_ptr<Node> readTree(const QFileInfo& info)
{
    auto node = std::make_unique<Node>();
    node->name = info.fileName();
    node->path = info.filePath();
    node->isFolder = info.isDir();
    node->size = info.size();
    if (node->isFolder) {
        const auto filter = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
        for (const QFileInfo& child : QDir(info.filePath()).entryInfoList(filter, QDir::Name))
            node->children.push_back(readTree(child));
    }
    return node;
}

QByteArray fileIdentifier(const Node& target, const QString& name, int characteristics,
                          quint32 location)
{
    QByteArray id;
    if (!name.isEmpty() && QString::fromLatin1(name.toLatin1()) == name) {
        id = '\x08' + name.toLatin1();
    } else if (!name.isEmpty()) {
        id = "\x10";
        for (const QChar c : name)
            id.append(char(c.unicode() >> 8)).append(char(c.unicode() & 0xFF));
    }
    Writer body;
    body.u16(1).u8(characteristics).u8(id.size());
    body.place(blockSize, target.entryAt, metadataPartition).u16(0).bytes(id);
    return descriptor(257, location, body.zeros((4 - (38 + id.size()) % 4) % 4));
}

QByteArray folderContents(const Node& folder, const Node& parent)
{
    QByteArray contents = fileIdentifier(parent, QString(), 8 | 2, folder.dataAt);
    for (const auto& child : folder.children) {
        const quint32 location = folder.dataAt + quint32(contents.size() / blockSize);
        contents += fileIdentifier(*child, child->name, child->isFolder ? 2 : 0, location);
    }
    return contents;
}

/// How the contents of a file are allocated.
enum Allocation
{
    NarrowExtents = 0, ///< within the entry's partition
    WideExtents = 1,
    Inside = 3 ///< in the entry itself
};

/// `allocation` holds the extents, or the contents. All but ordinary files have extended entries.
QByteArray fileEntry(int kind, quint32 location, qint64 size, const QByteArray& allocation,
                     Allocation allocationKind)
{
    const bool isInternal = kind >= 250;
    const bool isExtended = kind != fileKind;
    Writer body;
    body.u32(0).u16(4).u16(0).u16(1).u8(0).u8(kind).zeros(6).u16(allocationKind);
    body.u32(~0u).u32(~0u).u32(0x14A5).u16(1).zeros(2).u32(0).u64(quint64(size));
    if (isExtended)
        body.u64(quint64(size));
    body.u64(allocationKind == Inside ? 0 : blocksOf(size)).time().time().time();
    if (isExtended)
        body.time();
    body.u32(1).zeros(isExtended ? 4 + 16 + 16 : 16).implementation();
    body.u64(isInternal ? 0 : location + 16).u32(0).u32(quint32(allocation.size()));
    return descriptor(isExtended ? 266 : 261, location, body.bytes(allocation));
}

class ImageWriter
{
public:
    ImageWriter(const QString& folder, const QString& image, const QByteArray& volumeName)
        : m_root(readTree(QFileInfo(folder)))
        , m_file(image)
        , m_volumeName(volumeName)
    {
        if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            qFatal("%s cannot be written", qPrintable(image));
    }

    void write()
    {
        m_metadataBlocks = 2; // the description of the file set
        layOutMetadata(*m_root);
        m_metadataBlocks = (m_metadataBlocks + 31) / 32 * 32;
        m_dataBlocks = metadataAt + m_metadataBlocks;
        layOutFiles(*m_root);

        const quint32 end = partitionAt + m_dataBlocks;
        writeVolume(end);
        writeMetadataFile(250, metadataFileAt);
        writeMetadataFile(251, metadataMirrorAt);
        writeFileSet();
        writeNode(*m_root, *m_root);
        writeAnchor(end);
    }

private:
    void layOutMetadata(Node& node)
    {
        node.entryAt = m_metadataBlocks++;
        if (!node.isFolder)
            return;
        node.dataAt = m_metadataBlocks;
        node.size = folderContents(node, node).size();
        m_metadataBlocks += blocksOf(node.size);
        for (const auto& child : node.children)
            layOutMetadata(*child);
    }

    void layOutFiles(Node& node)
    {
        if (!node.isFolder) {
            node.dataAt = m_dataBlocks;
            m_dataBlocks += blocksOf(node.size) + 1;
        }
        for (const auto& child : node.children)
            layOutFiles(*child);
    }

    void writeBlock(quint32 block, const QByteArray& bytes)
    {
        m_file.seek(qint64(block) * blockSize);
        m_file.write(bytes.leftJustified(int(blocksOf(bytes.size())) * blockSize, '\0'));
    }
    void writeMetadata(quint32 block, const QByteArray& bytes)
    {
        writeBlock(partitionAt + metadataAt + block, bytes);
    }

    void writeVolume(quint32 end)
    {
        writeBlock(16, Writer().u8(0).bytes("BEA01").u8(1).result());
        writeBlock(17, Writer().u8(0).bytes("NSR03").u8(1).result());
        writeBlock(18, Writer().u8(0).bytes("TEA01").u8(1).result());
        for (const quint32 at : {sequenceAt, reserveSequenceAt}) {
            writeBlock(at, descriptor(1, at, primaryVolume()));
            writeBlock(at + 1, descriptor(5, at + 1, partition(end)));
            writeBlock(at + 2, descriptor(6, at + 2, logicalVolume()));
            writeBlock(at + 3, descriptor(7, at + 3, Writer().u32(4).u32(0)));
            writeBlock(at + 4, descriptor(8, at + 4, Writer().zeros(496)));
        }
        writeBlock(integrityAt, descriptor(9, integrityAt, integrity(end)));
        writeBlock(integrityAt + 1, descriptor(8, integrityAt + 1, Writer().zeros(496)));
        writeAnchor(anchorAt);
    }

    void writeAnchor(quint32 at)
    {
        Writer body;
        body.extent(16 * blockSize, sequenceAt).extent(16 * blockSize, reserveSequenceAt);
        writeBlock(at, descriptor(2, at, body.zeros(480)));
    }

    Writer primaryVolume() const
    {
        Writer body;
        body.u32(1).u32(0).string(m_volumeName, 32).u16(1).u16(1).u16(2).u16(2).u32(1).u32(1);
        body.string("1234567812345678" + m_volumeName, 128).characterSet().characterSet();
        body.zeros(16).zeros(32).time().implementation().zeros(64).u32(0).u16(1);
        return body.zeros(22);
    }

    Writer partition(quint32 end) const
    {
        Writer body;
        body.u32(2).u16(1).u16(0).identifier("+NSR03").zeros(128).u32(1).u32(partitionAt);
        return body.u32(end - partitionAt).implementation().zeros(128 + 156);
    }

    Writer logicalVolume() const
    {
        Writer map;
        map.u8(1).u8(6).u16(1).u16(0);
        map.u8(2).u8(64).zeros(2).identifier("*UDF Metadata Partition", revision).u16(1).u16(0);
        map.u32(metadataFileAt).u32(metadataMirrorAt).u32(~0u).u32(32).u16(32).u8(0).zeros(5);
        Writer body;
        body.u32(3).characterSet().string(m_volumeName, 128).u32(blockSize).domain();
        body.place(blockSize, 0, metadataPartition).u32(quint32(map.result().size())).u32(2);
        body.implementation().zeros(128).extent(2 * blockSize, integrityAt);
        return body.bytes(map.result());
    }

    Writer integrity(quint32 end) const
    {
        Writer body;
        body.time().u32(1).zeros(8).u64(1000).zeros(24).u32(2).u32(46).u32(0).u32(0);
        body.u32(end - partitionAt).u32(m_metadataBlocks).implementation().u32(1).u32(1);
        return body.u16(revision).u16(revision).u16(revision);
    }

    void writeMetadataFile(int kind, quint32 at)
    {
        const quint32 size = m_metadataBlocks * blockSize;
        const QByteArray allocation = Writer().extent(size, metadataAt).result();
        writeBlock(partitionAt + at, fileEntry(kind, at, size, allocation, NarrowExtents));
    }

    void writeFileSet()
    {
        Writer body;
        body.time().u16(3).u16(3).u32(1).u32(1).u32(0).u32(0).characterSet();
        body.string(m_volumeName, 128).characterSet().string(m_volumeName, 32).zeros(64);
        body.place(blockSize, m_root->entryAt, metadataPartition).domain().zeros(64);
        writeMetadata(0, descriptor(256, 0, body));
        writeMetadata(1, descriptor(8, 1, Writer().zeros(496)));
    }

    void writeNode(const Node& node, const Node& parent)
    {
        QByteArray entry;
        if (node.isFolder) {
            const QByteArray extent = Writer().extent(quint32(node.size), node.dataAt).result();
            entry = fileEntry(folderKind, node.entryAt, node.size, extent, NarrowExtents);
            writeMetadata(node.dataAt, folderContents(node, parent));
        } else {
            QFile source(node.path);
            if (!source.open(QIODevice::ReadOnly))
                qFatal("%s cannot be read", qPrintable(node.path));
            const QByteArray content = source.readAll();
            const bool isInside = content.size() <= largestInside;
            entry = fileEntry(fileKind, node.entryAt, content.size(),
                              isInside ? content : writeContents(content, node.dataAt),
                              isInside ? Inside : WideExtents);
        }
        writeMetadata(node.entryAt, entry);
        for (const auto& child : node.children)
            writeNode(*child, node);
    }

    /// The extents, as the file's entry lists them.
    QByteArray writeContents(const QByteArray& content, quint32 at)
    {
        const auto size = quint32(content.size());
        if (size <= largestWhole) {
            writeBlock(partitionAt + at, content);
            return Writer().place(size, at, dataPartition).result();
        }
        const quint32 listAt = at + blocksOf(firstExtent);
        const QByteArray rest =
            Writer().place(size - firstExtent, listAt + 1, dataPartition).result();
        writeBlock(partitionAt + at, content.left(firstExtent));
        writeBlock(partitionAt + listAt,
                   descriptor(258, listAt, Writer().u32(0).u32(quint32(rest.size())).bytes(rest)));
        writeBlock(partitionAt + listAt + 1, content.mid(firstExtent));
        const quint32 isList = 3u << 30;
        return Writer()
            .place(firstExtent, at, dataPartition)
            .place(isList | blockSize, listAt, dataPartition)
            .result();
    }

    std::unique_ptr<Node> m_root;
    QFile m_file;
    QByteArray m_volumeName;
    quint32 m_metadataBlocks = 0;
    quint32 m_dataBlocks = 0;
};

} // namespace

void writeUdfImage(const QString& folder, const QString& image, const QByteArray& volumeName)
{
    ImageWriter(folder, image, volumeName).write();
}
