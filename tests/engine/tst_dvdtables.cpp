// SPDX-License-Identifier: GPL-2.0-or-later
//
// What is read from a DVD's tables, on invented ones: discs that cannot be authored here.
#include "dvd/maintitle.h"
#include "dvd/titlelayout.h"
#include "dvd/titleset.h"
#include "engineobjects.h"
#include "files.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

using namespace engine;

namespace {

/// Writes a big-endian number; the bytes grow when it lies behind their end.
void put(Bytes& bytes, std::size_t offset, std::uint32_t value, std::size_t width)
{
    bytes.resize(qMax(bytes.size(), offset + width));
    for (std::size_t i = 0; i < width; ++i)
        bytes[offset + i] = std::uint8_t(value >> (8 * (width - 1 - i)));
}

/// A cell of so many seconds; `block` is the first byte of its description.
struct CellSketch
{
    int seconds;
    int block = 0;
};

using Chain = QList<CellSketch>;
using Chapters = QList<QPair<int, int>>; ///< by chain and program

/// Writes a program chain, in which each cell is a program; where it ends.
std::size_t putChain(Bytes& ifo, std::size_t offset, const Chain& cells)
{
    const std::size_t count = std::size_t(cells.size());
    const std::size_t playback = 236 + count;
    const std::size_t position = playback + 24 * count;
    put(ifo, offset + 2, unsigned(count << 8 | count), 2);
    put(ifo, offset + 230, 236, 2);
    put(ifo, offset + 232, unsigned(playback), 2);
    put(ifo, offset + 234, unsigned(position), 2);
    for (std::size_t i = 0; i < count; ++i) {
        const CellSketch& cell = cells[int(i)];
        put(ifo, offset + 236 + i, unsigned(i + 1), 1);
        put(ifo, offset + playback + 24 * i, unsigned(cell.block), 1);
        put(ifo, offset + playback + 24 * i + 6,
            unsigned(cell.seconds / 10 * 16 + cell.seconds % 10) << 8 | 0x40, 2);
        put(ifo, offset + playback + 24 * i + 20, 400, 4);
        put(ifo, offset + position + 4 * i, 1 << 16 | unsigned(i + 1), 4);
    }
    return offset + position + 4 * count;
}

Bytes titleSetOf(const QList<Chapters>& titles, const QList<Chain>& chains)
{
    const std::size_t chapterTable = 2048;
    std::size_t end = chapterTable + 8 + 4 * std::size_t(titles.size());
    Bytes ifo(chapterTable);
    std::copy_n("DVDVIDEO-VTS", 12, ifo.begin());
    put(ifo, 0x200, 0x10, 1); // PAL
    put(ifo, chapterTable, unsigned(titles.size()), 2);
    for (int i = 0; i < titles.size(); ++i) {
        put(ifo, chapterTable + 8 + 4 * std::size_t(i), unsigned(end - chapterTable), 4);
        for (const auto& [chain, program] : titles[i])
            put(ifo, end, unsigned(chain) << 16 | unsigned(program), 4), end += 4;
    }
    put(ifo, chapterTable + 4, unsigned(end - chapterTable - 1), 4);
    const std::size_t chainTable = (end / 2048 + 1) * 2048;
    put(ifo, 0xC8, 1, 4);
    put(ifo, 0xCC, unsigned(chainTable / 2048), 4);
    put(ifo, chainTable, unsigned(chains.size()), 2);
    end = chainTable + 8 + 8 * std::size_t(chains.size());
    for (int i = 0; i < chains.size(); ++i) {
        put(ifo, chainTable + 12 + 8 * std::size_t(i), unsigned(end - chainTable), 4);
        end = putChain(ifo, end, chains[i]);
    }
    put(ifo, chainTable + 4, unsigned(end - chainTable - 1), 4);
    return ifo;
}

/// The titles that are read from it.
std::vector<Title> titlesIn(const Bytes& ifo)
{
    IfoFindings findings("test");
    const auto set = parseTitleSet(ifo, findings);
    return set ? set->titles : std::vector<Title>();
}

DvdTitle titleOf(std::initializer_list<std::pair<int, int>> cells)
{
    DvdTitle title;
    for (const auto& [number, seconds] : cells) {
        Cell cell;
        cell.cellId = number;
        cell.duration = seconds * ticksPerSecond;
        title.facts.cells.push_back(cell);
        title.facts.duration += cell.duration;
    }
    return title;
}

} // namespace

class DvdTablesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void times()
    {
        const auto expect = [](quint32 code, bool isNtsc, double seconds) {
            Bytes bytes;
            put(bytes, 0, code, 4);
            const auto time = parseTime(bytes, isNtsc);
            QVERIFY(qAbs((time ? inSeconds(*time) : -1.0) - seconds) < 0.001);
        };
        expect(0x01020364, false, 3723.96);
        // An hour of NTSC, as it is counted, lasts 3.6 s longer.
        expect(0x010000C0, true, 3603.6);
        expect(0x000319E5, true, 5995 * 1001 / 30000.0);
        // Without a rate.
        expect(0x00001000, true, 10.01);
        expect(0x00001000, false, 10.0);
        // No decimal number.
        expect(0x00A00040, false, -1.0);
    }

    void aTitlePlaysItsChainsAndOneAngle()
    {
        // The second chain has a block of three angles between two plain cells.
        const auto titles =
            titlesIn(titleSetOf({{{1, 1}, {1, 2}, {2, 1}}},
                                {{{10}, {20}}, {{5}, {30, 0x50}, {30, 0x90}, {30, 0xD0}, {7}}}));
        QCOMPARE(inSeconds(titles.at(0).duration), 72.0);
        QCOMPARE(titles[0].cells.size(), std::size_t(5));
        QCOMPARE(titles[0].chapterStarts,
                 (std::vector<Ticks>{0, 10 * ticksPerSecond, 30 * ticksPerSecond}));
    }

    /// And the title begins where its first chapter does.
    void chaptersThatLeadNowhereAreLeftOut()
    {
        const auto titles = titlesIn(titleSetOf(
            {{{0, 1}, {1, 2}, {1, 0}, {1, 3}, {3, 1}, {0xFFFF, 0xFFFF}}}, {{{10}, {20}}, {}}));
        QCOMPARE(titles.at(0).chapterStarts, std::vector<Ticks>{0});
        QCOMPARE(inSeconds(titles[0].duration), 20.0);
    }

    /// 99 sets of 99 titles, with too many cells each and a video of zeros.
    void boundsDiscs()
    {
        QList<Chain> chains;
        Chapters chapters;
        for (int i = 1; i <= 20; ++i) {
            chains << Chain(QVector<CellSketch>(250, {4}).toList());
            chapters << qMakePair(i, 1);
        }
        QList<Chapters> titles;
        while (titles.size() < 99)
            titles << chapters;
        const Bytes ifo = titleSetOf(titles, chains);
        std::size_t cells = 0;
        for (const Title& title : titlesIn(ifo))
            cells += title.cells.size();
        QCOMPARE(cells, std::size_t(50000));

        const QTemporaryDir folder;
        for (int i = 1; i <= 99; ++i) {
            const QString set =
                folder.filePath(QString("VIDEO_TS/VTS_%1_").arg(i, 2, 10, QChar('0')));
            writeFile(set + "0.IFO",
                      QByteArray(reinterpret_cast<const char*>(ifo.data()), int(ifo.size())));
            writeFile(set + "1.VOB", QByteArray(1 << 20, 0));
        }
        QElapsedTimer timer;
        timer.start();
        const ImporterPtr importer = openItem(folder.path());
        QVERIFY(importer);
        QCOMPARE(importer->movieCount(), 99u);
        for (int movie = 0; movie < 99; ++movie) {
            const SourcePtr source = openVideo(importer, movie, 0x1E0);
            for (int position = 0; source && position < 100000; position += 1000)
                QVERIFY(!frameAt(*source, position));
        }
        QVERIFY2(timer.elapsed() < 30000, qPrintable(QString::number(timer.elapsed())));
    }

    /// Addresses outside of the files, for every cell again.
    void boundsLayouts()
    {
        TitleSet set;
        set.cellAddresses.assign(200000, {1, 1, 5000, 6000});
        Title title;
        title.cells.resize(5000);
        for (Cell& cell : title.cells)
            cell.vobId = cell.cellId = 1;
        QElapsedTimer timer;
        timer.start();
        QVERIFY(TitleLayout(set, title, 400).vobus().empty());
        QVERIFY(timer.elapsed() < 1000);
    }

    /// The cells 2 and 3 are angles of the same time, and lie in turns.
    void interleavedCellsAreReadInTheirPieces()
    {
        TitleSet set;
        set.cellAddresses = {{1, 1, 0, 99},    {1, 2, 100, 149}, {1, 2, 200, 249},
                             {1, 3, 150, 199}, {1, 3, 250, 299}, {1, 4, 300, 0xFFFFFFFF}};
        set.vobuSectors = {0, 50, 100, 130, 150, 200, 250, 300};
        Title title;
        for (const int id : {1, 2, 4}) {
            Cell cell;
            cell.vobId = 1;
            cell.cellId = id;
            cell.duration = ticksPerSecond;
            title.cells.push_back(cell);
        }
        const TitleLayout layout(set, title, 400);
        QStringList pieces;
        for (const TitleLayout::Piece& piece : layout.pieces())
            pieces << QString("%1+%2").arg(piece.sector).arg(piece.count);
        QCOMPARE(pieces, QStringList({"0+100", "100+50", "200+50", "300+100"}));
        std::vector<std::uint64_t> vobus;
        for (const TitleLayout::Vobu& vobu : layout.vobus())
            vobus.push_back(vobu.titleSector);
        QCOMPARE(vobus, (std::vector<std::uint64_t>{0, 50, 100, 130, 150, 200}));
        QCOMPARE(layout.cellAt(ticksPerSecond), std::size_t(1));
        QCOMPARE(layout.cellAt(100 * ticksPerSecond), std::size_t(2));
    }

    void findsTheMainTitle()
    {
        const auto mainOf = [](const std::vector<DvdTitle>& titles) {
            DvdDisc disc;
            // A set in front, whose cells have the same numbers but are others.
            disc.titleSets = {{1, true, {}, {titleOf({{1, 5}, {1, 5}})}}, {2, true, {}, titles}};
            const auto found = findMainTitle(disc);
            return found ? int(*found) - 1 : -2;
        };
        QCOMPARE(mainOf({titleOf({}), titleOf({{1, 0}})}), -1);
        QCOMPARE(mainOf({titleOf({{1, 10}}), titleOf({{2, 90}}), titleOf({{3, 50}})}), 1);
        QCOMPARE(mainOf({titleOf({{1, 10}}), titleOf({{2, 90}}), titleOf({{3, 90}})}), 1);
        // The film twice, and with a trailer between.
        QCOMPARE(
            mainOf({titleOf({{1, 45}, {2, 45}, {1, 45}, {2, 45}}), titleOf({{1, 45}, {2, 45}})}),
            1);
        QCOMPARE(
            mainOf({titleOf({{1, 90}, {3, 2}, {1, 90}}), titleOf({{1, 90}}), titleOf({{3, 2}})}),
            1);
        // A part of the film, and all episodes.
        QCOMPARE(mainOf({titleOf({{2, 45}}), titleOf({{1, 45}, {2, 45}})}), 1);
        QCOMPARE(mainOf({titleOf({{1, 40}}), titleOf({{2, 40}}), titleOf({{1, 40}, {2, 40}})}), 2);
        // A logo shown twice in the film.
        QCOMPARE(mainOf({titleOf({{1, 1}}), titleOf({{1, 1}, {2, 90}, {1, 1}})}), 1);
    }
};

QTEST_GUILESS_MAIN(DvdTablesTest)
#include "tst_dvdtables.moc"
