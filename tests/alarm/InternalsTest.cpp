// SPDX-FileCopyrightText: 2026 The FileFormatsVantero authors
// SPDX-License-Identifier: MIT

// What no text shows: the scanners by themselves, and running out of memory. The test is linked
// with the objects of the library, and malloc() of all of them is the one below.

#include "alarm/AlarmListParser.h"
#include "alarm/AlarmListReader_p.h"
#include "alarm/AlarmUpdateParser.h"
#include "alarm/ScannerRuntime_p.h"
#include "alarm/StandardInput.h"
#include "alarm/SyntaxErrorText_p.h"
#include "alarm/TokenLocation_p.h"
#include "support/Expect.h"
#include "support/Literals.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#define YYSTYPE vn::internal::AlarmToken
#define YYLTYPE vn::PLLocation
#include "alarmlist_lex.h"

using namespace vn;

namespace {

int s_allocationsThatWork = -1; // -1 for any number
std::size_t s_lastSize = 0;
int s_listNodes = 0; // QList makes the nodes of variants with new
int s_mapNodes = 0;

/** From now on, this many allocations work. */
class MemoryFor
{
public:
    explicit MemoryFor(int allocations)
    {
        // What runs when a process ends, such as the writing of coverage counters, has memory.
        static const int isRegistered = std::atexit([] { s_allocationsThatWork = -1; });
        EXPECT_EQ(isRegistered, 0);
        s_allocationsThatWork = allocations;
    }
    ~MemoryFor() { s_allocationsThatWork = -1; }
    MemoryFor(const MemoryFor &) = delete; // there is one heap
    MemoryFor &operator=(const MemoryFor &) = delete;
};

} // namespace

extern "C" void *__real_malloc(std::size_t size);
extern "C" void *__wrap_malloc(std::size_t size)
{
    s_lastSize = size;
    if (s_allocationsThatWork == 0)
        return nullptr;
    if (s_allocationsThatWork > 0)
        --s_allocationsThatWork;
    return __real_malloc(size);
}

// What some compilers make of malloc() and memset().
extern "C" void *__real_calloc(std::size_t number, std::size_t size);
extern "C" void *__wrap_calloc(std::size_t number, std::size_t size)
{
    return s_allocationsThatWork == 0 ? nullptr : __real_calloc(number, size);
}

void *operator new(std::size_t size)
{
    if (size == sizeof(QVariant))
        ++s_listNodes;
    if (void *const memory = __real_malloc(size))
        return memory;
    throw std::bad_alloc();
}
void operator delete(void *memory) noexcept
{
    std::free(memory);
}
void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

// QMapDataBase::createNode(int, int, QMapNodeBase *, bool)
extern "C" void *__real__ZN12QMapDataBase10createNodeEiiP12QMapNodeBaseb(void *, int, int, void *,
                                                                         bool);
extern "C" void *__wrap__ZN12QMapDataBase10createNodeEiiP12QMapNodeBaseb(void *map, int size,
                                                                         int alignment,
                                                                         void *parent, bool left)
{
    ++s_mapNodes;
    return __real__ZN12QMapDataBase10createNodeEiiP12QMapNodeBaseb(map, size, alignment, parent,
                                                                   left);
}

// ---- Cost --------------------------------------------------------------------------------------

namespace {

struct Nodes
{
    int ofLists;
    int ofMaps;
};

/** The nodes that are made while a text is parsed: @p count times @p piece between the marks. */
Nodes nodesFor(const QByteArray &open, const QByteArray &piece, int count, const QByteArray &close)
{
    QByteArray text = open;
    for (int i = 0; i < count; ++i)
        text += (i > 0 ? QByteArray(",") : QByteArray()) + piece;
    text += close;
    AlarmListParser parser;
    // The parser's own stack begins with as much memory as a node: let it be there already.
    parser.parse(QStringLiteral("[1]"));
    s_listNodes = 0;
    s_mapNodes = 0;
    const QVariant value = parser.parse(&text);
    return {s_listNodes, s_mapNodes};
}

} // namespace

TEST(AlarmListCost, oneNodeForEachElement)
{
    for (const char *element : {"1", "'text'", "[]", "null"}) {
        SCOPED_TRACE(element);
        for (const int count : {1, 9, 90})
            EXPECT_EQ(nodesFor("[", element, count, "]").ofLists, count);
    }
    EXPECT_EQ(nodesFor("[", "[1,2,3]", 90, "]").ofLists, 360);
}

TEST(AlarmListCost, oneNodeForEachMember)
{
    for (const char *member : {"a:1", "'a':'text'", "a:{}", "a:null"}) {
        SCOPED_TRACE(member);
        for (const int count : {1, 9, 90})
            EXPECT_EQ(nodesFor("{", member, count, "}").ofMaps, count);
    }
    // From their second time on, keys that come again are remembered: once as they are, and once
    // while their order is found.
    EXPECT_EQ(nodesFor("[", "{a:1,b:2,a:3}", 90, "]").ofMaps, 270 + 2 * 3);
    EXPECT_EQ(nodesFor("{", "k:{a:1,b:2}", 60, "}").ofMaps, 180 + 2 * 2);
}

// ---- Syntax errors ------------------------------------------------------------------------------

using internal::SyntaxErrorText;

TEST(SyntaxErrorText, namesTheTokens)
{
    const char *const expected[] = {"A", "B", "C", "D"};
    EXPECT_STREQ(SyntaxErrorText("X", expected, 0).text(), "syntax error, unexpected X");
    EXPECT_STREQ(SyntaxErrorText("X", expected, 1).text(),
                 "syntax error, unexpected X, expecting A");
    EXPECT_STREQ(SyntaxErrorText("X", expected, 4).text(),
                 "syntax error, unexpected X, expecting A or B or C or D");
    EXPECT_TRUE(SyntaxErrorText("X", expected, 4).isComplete());
}

TEST(SyntaxErrorText, needsNoMemoryUpTo127Characters)
{
    const std::string beginning = "syntax error, unexpected ";
    const std::string longest(127 - beginning.size(), 'x');
    const std::string tooLong(128 - beginning.size(), 'x');
    const MemoryFor nothing(0);
    EXPECT_EQ(SyntaxErrorText(longest.c_str(), nullptr, 0).text(), beginning + longest);
    EXPECT_TRUE(SyntaxErrorText(longest.c_str(), nullptr, 0).isComplete());
    EXPECT_FALSE(SyntaxErrorText(tooLong.c_str(), nullptr, 0).isComplete());
}

TEST(SyntaxErrorText, takesTwiceTheNeededMemory)
{
    const std::string name(1000, 'x');
    const std::string text = "syntax error, unexpected " + name;
    const SyntaxErrorText error(name.c_str(), nullptr, 0);
    EXPECT_EQ(error.text(), text);
    EXPECT_TRUE(error.isComplete());
    EXPECT_EQ(s_lastSize, 2 * (text.size() + 1));
}

TEST(SyntaxErrorText, namesNothingWithoutMemory)
{
    const std::string name(1000, 'x');
    const MemoryFor nothing(0);
    const SyntaxErrorText error(name.c_str(), nullptr, 0);
    EXPECT_STREQ(error.text(), "syntax error");
    EXPECT_FALSE(error.isComplete());
}

TEST(SyntaxErrorText, realMessagesNeedNoMemory)
{
    AlarmListParser parser;
    QByteArray text = "{1";
    // The scanner takes two pieces for its buffer, the message none.
    const MemoryFor scanner(2);
    expectParseError([&] { parser.parse(&text); },
                     "syntax error, unexpected TNUMBER, expecting TSTRING or '}'"_q, 0, 1, 2);
}

// ---- Ends of the process ------------------------------------------------------------------------

TEST(ScannerRuntimeDeathTest, writesItsMessageAndExitsWith2)
{
    const char *const messages[] = {
        "input in flex scanner failed",
        "fatal flex scanner internal error--end of buffer missed",
        "fatal flex scanner internal error--no action found",
        "fatal error - scanner input buffer overflow",
        "out of dynamic memory in yy_get_next_buffer()",
        "flex scanner jammed",
    };
    for (const char *message : messages)
        EXPECT_EXIT(internal::endProcess("alarmlist", message), testing::ExitedWithCode(2),
                    testing::Eq(std::string(message) + "\n"));
}

TEST(ScannerRuntimeDeathTest, namesFunctionsWithTheirPrefix)
{
    EXPECT_EXIT(internal::endProcess("alarmlist", "out of dynamic memory in yy_scan_buffer()"),
                testing::ExitedWithCode(2),
                testing::Eq("out of dynamic memory in alarmlist_scan_buffer()\n"));
}

TEST(ScannerRuntimeDeathTest, scannersWithoutMemory)
{
    AlarmListParser lists;
    AlarmUpdateParser updates(nullptr);
    QByteArray text = "[1]#"; // the plain path needs no scanner, but does not take this
    EXPECT_EXIT(
        {
            const MemoryFor nothing(0);
            updates.parse(&text);
        },
        testing::ExitedWithCode(2),
        testing::Eq("out of dynamic memory in alarmupdate_scan_buffer()\n"));
    EXPECT_EXIT(
        {
            const MemoryFor nothing(0);
            lists.parse(&text);
        },
        testing::ExitedWithCode(2),
        testing::Eq("out of dynamic memory in alarmlist_scan_buffer()\n"));
    const StandardInput input("[1]"_b);
    EXPECT_EXIT(
        {
            const MemoryFor nothing(0);
            lists.parse("x", 1);
        },
        testing::ExitedWithCode(2),
        testing::Eq("out of dynamic memory in alarmlist_create_buffer()\n"));
}

TEST(ParserObject, cannotBeMadeWithoutMemory)
{
    const MemoryFor nothing(0);
    EXPECT_THROW(AlarmListParser(), std::bad_alloc);
    EXPECT_THROW(AlarmUpdateParser(nullptr), std::bad_alloc);
}

// ---- Locations ----------------------------------------------------------------------------------

TEST(TokenLocation, endsWithTheLargestOffset)
{
    PLLocation location = {10, 20};
    internal::startToken(location, 5);
    EXPECT_EQ(location.start, 20);
    EXPECT_EQ(location.end, 25);
    internal::extendToken(location, 0x7fffffff - 25);
    EXPECT_EQ(location.start, 20);
    EXPECT_EQ(location.end, 0x7fffffff);
    expectParseError([&] { internal::extendToken(location, 1); }, "text of 2 GiB or more"_q, 0, 20,
                     0x7fffffff);
    EXPECT_EQ(location.end, 0x7fffffff);
}

// ---- Scanners -----------------------------------------------------------------------------------

namespace {

/** The scanner of a reader, asked for tokens directly. */
class ListScanner
{
public:
    explicit ListScanner(const QByteArray &text) { read(text); }
    ~ListScanner() { alarmlist_delete_buffer(m_buffer, scanner()); }
    ListScanner(const ListScanner &) = delete; // the scanner is the reader's
    ListScanner &operator=(const ListScanner &) = delete;

    /** Goes on with another text. */
    void read(const QByteArray &text)
    {
        if (m_buffer)
            alarmlist_delete_buffer(m_buffer, scanner());
        m_text = text + "\0\0"_b;
        m_buffer = alarmlist_scan_buffer(m_text.data(), static_cast<std::size_t>(m_text.size()),
                                         scanner());
        m_reader.builder().tape().begin(m_text.constData());
    }

    int next() { return alarmlist_lex(&m_count, &m_reader.builder()); }
    const internal::AlarmToken &token() { return m_reader.builder().token(); }
    QString text()
    {
        // Behind a token the scanner has a zero byte in the place of the next.
        return token().isCollected ? token().collected : QString(token().bytes);
    }
    yyscan_t scanner() { return m_reader.builder().scanner(); }
    internal::AlarmListReader &reader() { return m_reader; }
    AlarmListParser &parser() { return m_parser; }

private:
    AlarmListParser m_parser;
    internal::AlarmListReader m_reader{&m_parser};
    QByteArray m_text;
    YY_BUFFER_STATE m_buffer = nullptr;
    int m_count = 0;
};

using Kind = internal::AlarmEntry::Kind;

} // namespace

TEST(AlarmListScanner, givesTheCodesAndValuesOfTokens)
{
    ListScanner scanner("{ word 'text' \"text\" 'te\\u0041xt' 1.5 true false null } [ ] , : #");
    EXPECT_EQ(scanner.next(), '{');
    for (const char *text : {"word", "text", "text", "te\\u0041xt"}) {
        EXPECT_EQ(scanner.next(), 32001);
        EXPECT_EQ(scanner.text(), QString::fromLatin1(text));
    }
    EXPECT_EQ(scanner.next(), 32002);
    EXPECT_EQ(scanner.token().number, 1.5);
    EXPECT_EQ(scanner.next(), 32003);
    EXPECT_EQ(scanner.token().number, 1);
    EXPECT_EQ(scanner.next(), 32003);
    EXPECT_EQ(scanner.token().number, 0);
    EXPECT_EQ(scanner.next(), 32004);
    EXPECT_EQ(scanner.token().kind, Kind::Null);
    for (const char character : {'}', '[', ']', ',', ':'})
        EXPECT_EQ(scanner.next(), character);
    EXPECT_EQ(scanner.next(), 0);
}

TEST(AlarmListScanner, knowsItsParserAndWhereItsValuesGo)
{
    ListScanner scanner("word");
    EXPECT_EQ(scanner.next(), 32001);
    EXPECT_EQ(alarmlistget_extra(scanner.scanner()), &scanner.parser());
    EXPECT_EQ(alarmlistget_lval(scanner.scanner()), &scanner.token());
    EXPECT_EQ(alarmlistget_lloc(scanner.scanner()), &scanner.reader().builder().location());
}

TEST(AlarmListScanner, collectsTheStringsOfAllScannersInOnePlace_onPurpose)
{
    ListScanner a("\"first");
    ListScanner b("'ot\\her'");
    EXPECT_EQ(a.next(), 0);
    EXPECT_EQ(b.next(), 0); // no escape: b stays in its string
    b.read("her'");
    EXPECT_EQ(b.next(), 32001);
    EXPECT_EQ(b.text(), "other"_q);
    a.read(" string\"");
    EXPECT_EQ(a.next(), 32001);
    EXPECT_EQ(a.text(), "other string"_q);
    // The value that has been given stays as it is.
    EXPECT_EQ(b.text(), "other"_q);
}

TEST(AlarmListScanner, collectsStringsInOnePieceWhenTheTextHasBeenRead)
{
    const struct
    {
        const char *text;
        const char *collected;
    } rows[] = {
        {"['first', 'last', word]", "last"},
        {"{'first': [], \"last\": {}}", "last"},
        {"['a', ''] # 'b'", ""},
        {"['pie\\nces', 'last' 1]", "last"},
        {"['first', 'pie\\nces']", "pie\\nces"},
        {"['first', 'open", "open"},
        {"[word]", "as before"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        const QByteArray text = row.text + "\0\0"_b;
        for (const bool plain : {true, false}) {
            internal::AlarmListReader reader(nullptr);
            alarmlist_collected() = "as before"_q;
            try {
                const auto size = static_cast<unsigned>(text.size());
                plain ? reader.read(text.constData(), size)
                      : reader.readByGrammar(QByteArray(text).data(), size);
            } catch (const ParseException &) {
            }
            EXPECT_EQ(alarmlist_collected(), QString::fromLatin1(row.collected));
        }
    }
}

TEST(AlarmListScanner, clearsThePlaceWhenAStringBegins)
{
    ListScanner a("\"unended");
    EXPECT_EQ(a.next(), 0);
    EXPECT_EQ(alarmlist_collected(), "unended"_q);
    ListScanner b("'");
    EXPECT_EQ(b.next(), 0);
    EXPECT_EQ(alarmlist_collected(), QString());
}
