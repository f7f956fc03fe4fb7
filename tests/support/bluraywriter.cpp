// SPDX-License-Identifier: GPL-2.0-or-later
#include "bluraywriter.h"

#include "bytewriter.h"
#include "files.h"

#include <algorithm>

namespace authoring {

namespace {

class Writer : public ByteWriter<Writer, true>
{};

QByteArray withLength8(const QByteArray& bytes)
{
    return Writer().u8(bytes.size()).bytes(bytes).result();
}

QByteArray withLength16(const QByteArray& bytes)
{
    return Writer().u16(bytes.size()).bytes(bytes).result();
}

QByteArray withLength32(const QByteArray& bytes)
{
    return Writer().u32(quint32(bytes.size())).bytes(bytes).result();
}

bool isPicture(const Stream& stream)
{
    return stream.language.isEmpty();
}

QByteArray streamAttributes(const Stream& stream)
{
    Writer bytes;
    bytes.u8(stream.coding);
    if (stream.coding < 0x90 || stream.coding > 0x92)
        bytes.u8(stream.formatAndRate);
    if (isPicture(stream))
        bytes.u8(stream.aspect << 4).zeros(18);
    else
        bytes.bytes(stream.language).zeros(16);
    return withLength8(bytes.result());
}

/// The streams as playlists list them: how many of each kind, then each in turn.
QByteArray streamTable(const QList<Stream>& streams)
{
    int counts[3] = {0, 0, 0};
    Writer entries;
    for (const Stream& stream : streams) {
        const bool isSubtitle = stream.coding == 0x90;
        ++counts[isPicture(stream) ? 0 : isSubtitle ? 2 : 1];
        entries.bytes(withLength8(Writer().u8(1).u16(stream.pid).zeros(6).result()));
        Writer attributes;
        attributes.u8(stream.coding);
        if (!isSubtitle)
            attributes.u8(stream.formatAndRate);
        entries.bytes(withLength8(attributes.bytes(stream.language).zeros(1).result()));
    }
    Writer table;
    table.u16(0).u8(counts[0]).u8(counts[1]).u8(counts[2]).zeros(9);
    return withLength16(table.bytes(entries.result()).result());
}

QByteArray playItem(const Item& item)
{
    Writer bytes;
    const bool hasAngles = !item.secondAngle.isEmpty();
    bytes.bytes(item.clip).bytes("M2TS").u16(hasAngles ? 0x11 : 1).u8(item.sequence);
    bytes.u32(item.in).u32(item.out).zeros(12);
    if (hasAngles)
        bytes.u8(2).u8(0).bytes(item.secondAngle).bytes("M2TS").u8(0);
    return withLength16(bytes.bytes(streamTable(item.streams)).result());
}

QByteArray sequenceInfo(const QList<Sequence>& sequences)
{
    Writer bytes;
    bytes.u8(0).u8(1).u32(0).u8(sequences.size()).u8(0);
    for (const Sequence& sequence : sequences)
        bytes.u16(0x1001).u32(sequence.firstPacket).u32(sequence.start).u32(sequence.end);
    return withLength32(bytes.result());
}

QByteArray programInfo(const QList<Stream>& streams)
{
    Writer bytes;
    bytes.u8(0).u8(1).u32(0).u16(0x100).u8(streams.size()).u8(0);
    for (const Stream& stream : streams)
        bytes.u16(stream.pid).bytes(streamAttributes(stream));
    return withLength32(bytes.result());
}

/// A coarse entry wherever the high bits of a point differ from those of the point before.
QByteArray entryPointMap(const QList<EntryPoint>& points)
{
    Writer coarse;
    Writer fine;
    quint64 high = ~quint64(0);
    int coarseCount = 0;
    for (int i = 0; i < points.size(); ++i) {
        const quint32 time = points.at(i).time / 2 / 256; // the low bits are not kept
        const quint32 packet = points.at(i).packet;
        const quint64 pointHigh = quint64(time >> 11) << 32 | packet >> 17;
        if (pointHigh != high) {
            high = pointHigh;
            ++coarseCount;
            coarse.u32(quint32(i) << 14 | (time >> 11 << 1)).u32(packet & ~0x1FFFFu);
        }
        fine.u32((time & 0x7FF) << 17 | (packet & 0x1FFFF));
    }
    Writer bytes;
    bytes.u16(1);
    if (!points.isEmpty()) {
        const quint64 counts = quint64(1) << 34 | quint64(coarseCount) << 18 | points.size();
        bytes.u8(0).u8(1).u16(0x1011).u16(int(counts >> 32)).u32(quint32(counts)).u32(14);
        bytes.u32(quint32(4 + coarse.result().size())).bytes(coarse.result()).bytes(fine.result());
    }
    return withLength32(bytes.result());
}

} // namespace

QList<Stream> usualStreams()
{
    return {{0x1011, 0x1B, 0x53, {}}, {0x1100, 0x81, 0x31, "eng"}};
}

QByteArray clipInformation(const Clip& clip)
{
    const QByteArray info = withLength32(
        Writer().u16(0).u8(1).u8(1).u32(0).u32(6000000).u32(1000).zeros(128 + 32).result());
    const QByteArray sequences = sequenceInfo(clip.sequences);
    const QByteArray programs = programInfo(clip.streams);
    const QByteArray map = entryPointMap(clip.entryPoints);
    const quint32 sequencesAt = quint32(40 + info.size());
    const quint32 programsAt = sequencesAt + quint32(sequences.size());
    const quint32 mapAt = programsAt + quint32(programs.size());
    Writer bytes;
    bytes.bytes("HDMV0200").u32(sequencesAt).u32(programsAt).u32(mapAt);
    bytes.u32(mapAt + quint32(map.size())).zeros(16);
    bytes.bytes(info).bytes(sequences).bytes(programs).bytes(map).u32(0);
    return bytes.result();
}

QByteArray playlist(const QList<Item>& items, const QList<Mark>& marks)
{
    const QByteArray application = withLength32(Writer().u8(0).u8(1).zeros(12).result());
    Writer list;
    list.u16(0).u16(items.size()).u16(0);
    for (const Item& item : items)
        list.bytes(playItem(item));
    Writer markList;
    markList.u16(marks.size());
    for (const Mark& mark : marks)
        markList.u8(0).u8(mark.kind).u16(mark.item).u32(mark.time).u16(0xFFFF).u32(0);
    const QByteArray itemBytes = withLength32(list.result());
    const quint32 itemsAt = quint32(40 + application.size());
    Writer bytes;
    bytes.bytes("MPLS0200").u32(itemsAt).u32(itemsAt + quint32(itemBytes.size())).zeros(24);
    bytes.bytes(application).bytes(itemBytes).bytes(withLength32(markList.result()));
    return bytes.result();
}

Clip scanStream(const QString& path)
{
    const QByteArray bytes = contentOf(path);
    if (bytes.isEmpty())
        qFatal("%s is missing", qPrintable(path));
    quint32 first = ~0u;
    quint32 last = 0;
    Clip clip;
    for (int at = 0; at + 192 <= bytes.size(); at += 192) {
        const uchar* const packet = reinterpret_cast<const uchar*>(bytes.constData()) + at + 4;
        const bool beginsPicture = ((packet[1] << 8 | packet[2]) & 0x5FFF) == 0x5011;
        const bool hasExtension = packet[3] & 0x20;
        const uchar* const pes = packet + 4 + (hasExtension ? packet[4] + 1 : 0);
        if (!beginsPicture || !(pes[7] & 0x80))
            continue;
        const quint32 time = quint32(pes[9] >> 1 & 7) << 30 | quint32(pes[10]) << 22 |
                             quint32(pes[11] >> 1) << 15 | quint32(pes[12]) << 7 | pes[13] >> 1;
        first = std::min(first, time);
        last = std::max(last, time);
        if (hasExtension && packet[4] > 0 && packet[5] & 0x40)
            clip.entryPoints.append({time, quint32(at / 192)});
    }
    clip.sequences = {{0, first / 2, (last + 3600) / 2}};
    clip.streams = usualStreams();
    return clip;
}

Disc::Disc(const QString& root)
    : m_root(root)
{
    // An index without titles, whose two fixed entries lead nowhere, and no movie objects.
    Writer index;
    index.bytes("INDX0200").u32(78).u32(0).zeros(24).u32(34).zeros(34).u32(26);
    for (int i = 0; i < 2; ++i)
        index.u32(0x40000000).u16(0).u16(0xFFFF).u32(0);
    write("BDMV/index.bdmv", index.u16(0).result());
    write("BDMV/MovieObject.bdmv", Writer().bytes("MOBJ0200").zeros(32).u32(6).zeros(6).result());
}

void Disc::write(const QString& name, const QByteArray& content) const
{
    writeFile(path(name), content);
}

void Disc::addClip(const QString& name, const Clip& clip) const
{
    write("BDMV/CLIPINF/" + name + ".clpi", clipInformation(clip));
}

void Disc::addPlaylist(const QString& name, const QList<Item>& items,
                       const QList<Mark>& marks) const
{
    write("BDMV/PLAYLIST/" + name + ".mpls", playlist(items, marks));
}

Clip Disc::addStream(const QString& name, const QString& source) const
{
    const Clip clip = scanStream(source);
    addClip(name, clip);
    QDir().mkpath(path("BDMV/STREAM"));
    if (!QFile::copy(source, path("BDMV/STREAM/" + name + ".m2ts")))
        qFatal("%s cannot be copied", qPrintable(source));
    return clip;
}

void Disc::setName(const QByteArray& name, const QString& language) const
{
    write("BDMV/META/DL/bdmt_" + language + ".xml",
          "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
          "<disclib xmlns=\"urn:BDA:bdmv;disclib\" xmlns:di=\"urn:BDA:bdmv;discinfo\">"
          "<di:discinfo><di:title><di:name>" +
              name + "</di:name></di:title></di:discinfo></disclib>\n");
}

} // namespace authoring
