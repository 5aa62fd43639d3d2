#include "document/StatementTree.h"

#include <algorithm>
#include <atomic>
#include <limits>
#include <stdexcept>
#include <utility>

#include "base/ByteOrderMark.h"
#include "document/LargePages.h"

namespace kiv::detail {
namespace {

constexpr std::uint64_t kMaxSize = std::numeric_limits<Index>::max();

/// How far behind `from` a byte stands; a large number when it stands in front of it. They need not
/// be of one text.
std::size_t distance(const char* from, const char* to) {
    return reinterpret_cast<std::uintptr_t>(to) - reinterpret_cast<std::uintptr_t>(from);
}

/// Every load and every addition draws a number, so that a node of another document, or one that is
/// gone, is told from those that took its place. It takes 2^32 of them until one comes again.
Index drawSerial() {
    static std::atomic<Index> last{0};
    Index serial = ++last;
    while (serial == 0) serial = ++last;
    return serial;
}

/// What an index has to name must not be too large for it.
void requireSize(std::uint64_t size) {
    if (size > kMaxSize) throw std::length_error("KDXDocument: more than 4 GiB");
}

/// Puts statement after statement below the innermost open object.
class TreeBuilder {
public:
    explicit TreeBuilder(std::vector<Statement>& builtStatements)
        : statements(builtStatements), serial(drawSerial()) {
        statements.emplace_back().serial = serial;
    }

    void add(const KDXReader& reader, std::size_t offset) {
        const auto index = static_cast<Index>(statements.size());
        Statement& statement = statements.emplace_back();
        statement.begin = static_cast<Index>(offset);
        statement.length = static_cast<Index>(reader.source().size());
        statement.line = static_cast<Index>(reader.lineNumber());
        statement.serial = serial;
        statement.kind = static_cast<std::uint8_t>(reader.kind());
        statement.isComment = isCommentAlone(reader);
        if (reader.kind() == MiniKDXParser::lineObject ||
            reader.kind() == MiniKDXParser::lineParameter)
            statement.halves = placesOfHalves(reader);
        statement.parent = open;
        statement.previous = statements[open].last;
        if (statement.previous == kNone)
            statements[open].first = index;
        else
            statements[statement.previous].next = index;
        statements[open].last = index;
        if (reader.kind() == MiniKDXParser::lineObject) open = index;
        if (reader.kind() == MiniKDXParser::lineEnd) open = statements[open].parent;
    }

private:
    std::vector<Statement>& statements;
    Index serial;
    Index open = kRoot;
};

/// In pieces whose count fits in a byte: sixteen bytes are then compared and counted in one step.
std::size_t countLines(std::string_view text) {
    constexpr std::size_t kPiece = 240;
    std::size_t count = 1;
    for (; !text.empty(); text.remove_prefix(std::min(kPiece, text.size()))) {
        std::uint8_t feeds = 0;
        for (const char c : text.substr(0, kPiece))
            feeds = static_cast<std::uint8_t>(feeds + (c == '\n' ? 1 : 0));
        count += feeds;
    }
    return count;
}

}  // namespace

std::vector<Statement> readStatements(std::string_view text, std::size_t offset) {
    requireSize(std::uint64_t{offset} + text.size());
    std::vector<Statement> statements;
    statements.reserve(countLines(text) + 1);
    hintLargePages(statements.data(), statements.capacity() * sizeof(Statement));
    TreeBuilder builder(statements);
    KDXReader reader(text);
    while (reader.next()) {
        const auto begin = static_cast<std::size_t>(reader.source().data() - text.data());
        builder.add(reader, offset + begin);
    }
    // Where lines are continued there are fewer statements than lines.
    if (statements.size() < statements.capacity() / 8 * 7) statements.shrink_to_fit();
    return statements;
}

bool isCommentAlone(const KDXReader& reader) {
    return reader.kind() == MiniKDXParser::lineBlank && !reader.comment().empty();
}

HalfPlaces placesOfHalves(const KDXReader& reader) {
    const std::string_view source = reader.source();
    const std::string_view first = reader.first();
    const std::string_view second = reader.second();
    // Halves that were simplified, and lines that were joined or copied, lie elsewhere: anywhere.
    const std::size_t firstBegin = distance(source.data(), first.data());
    const std::size_t secondBegin = distance(source.data(), second.data());
    const std::size_t behindSecond =
        distance(second.data() + second.size(), source.data() + source.size());
    const bool isOutside = firstBegin + first.size() > secondBegin;
    if (isOutside || std::max({firstBegin, secondBegin, behindSecond}) >= HalfPlaces::kUnknown)
        return {};
    const auto byte = [](std::size_t place) { return static_cast<std::uint8_t>(place); };
    return {byte(firstBegin), byte(first.size()), byte(secondBegin), byte(behindSecond)};
}

StatementTree::StatementTree(std::string text)
    : loaded(std::move(text)),
      statements(readStatements(loaded, 0)),
      markLength(byteOrderMarkLength(loaded)) {}

Index StatementTree::lastBelow(Index index) const {
    while (statements[index].last != kNone) index = statements[index].last;
    return index;
}

Index StatementTree::previousInText(Index index) const {
    const Index previous = statements[index].previous;
    return previous != kNone ? lastBelow(previous) : statements[index].parent;
}

Index StatementTree::firstOwned(Index index) const {
    if (!isSaying(index) || isEnd(index)) return index;
    while (statements[index].previous != kNone && statements[statements[index].previous].isComment)
        index = statements[index].previous;
    return index;
}

std::size_t StatementTree::addBytes(std::string_view bytes) {
    const std::size_t begin = added.size();
    requireSize(std::uint64_t{begin} + bytes.size());
    added.append(bytes);
    return begin;
}

void StatementTree::reserve(std::size_t count) {
    const std::size_t needed = statements.size() + count;
    requireSize(needed);
    if (needed > statements.capacity())
        statements.reserve(std::max(needed, statements.capacity() + statements.capacity() / 2));
}

Index StatementTree::insert(Index parent, Index behind,
                            const std::vector<Statement>& fragment) noexcept {
    const Index base =
        size() - 1;  // added to the links of the fragment, apart from those to the root
    const auto moved = [base](Index index) { return index == kNone ? kNone : index + base; };
    for (std::size_t i = 1; i < fragment.size(); ++i) {
        Statement statement = fragment[i];
        for (Index* link : {&statement.parent, &statement.first, &statement.last,
                            &statement.previous, &statement.next})
            *link = moved(*link);
        statement.state = Statement::State::added;
        statements.push_back(statement);
    }
    const Index first = moved(fragment.front().first);
    if (first != kNone) link(parent, behind, first, moved(fragment.front().last));
    return first;
}

void StatementTree::setBytes(Index index, std::size_t begin, std::size_t length,
                             bool isComment) noexcept {
    Statement& statement = statements[index];
    statement.begin = static_cast<Index>(begin);
    statement.length = static_cast<Index>(length);
    statement.isComment = isComment;
    statement.halves = {};
    statement.state = Statement::State::added;
    changed = true;
}

void StatementTree::remove(Index first, Index last) noexcept {
    const Index end = nextBehind(last);
    for (Index i = first; i != end; i = nextInText(i))
        statements[i].state = Statement::State::removed;
    unlink(first, last);
}

void StatementTree::move(Index first, Index last, Index parent, Index behind) noexcept {
    unlink(first, last);
    link(parent, behind, first, last);
    const Index end = nextBehind(last);
    for (Index i = first; i != end; i = nextInText(i))
        if (statements[i].state == Statement::State::loaded)
            statements[i].state = Statement::State::moved;
}

void StatementTree::unlink(Index first, Index last) noexcept {
    const Index parent = statements[first].parent;
    const Index before = statements[first].previous;
    const Index behind = statements[last].next;
    (before == kNone ? statements[parent].first : statements[before].next) = behind;
    (behind == kNone ? statements[parent].last : statements[behind].previous) = before;
    statements[first].previous = kNone;
    statements[last].next = kNone;
    changed = true;
}

void StatementTree::link(Index parent, Index behind, Index first, Index last) noexcept {
    const Index next = behind == kNone ? statements[parent].first : statements[behind].next;
    statements[first].previous = behind;
    statements[last].next = next;
    (behind == kNone ? statements[parent].first : statements[behind].next) = first;
    (next == kNone ? statements[parent].last : statements[next].previous) = last;
    for (Index i = first; i != next; i = statements[i].next) statements[i].parent = parent;
    changed = true;
}

}  // namespace kiv::detail
