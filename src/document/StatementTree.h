#pragma once

#include <kiv/KDXReader.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "parser/StatementParts.h"

// The statements of a document: a flat array of small entries that refer to each other by index,
// and to their bytes in one of two texts, the one that was loaded and the one that edits append to.
// The entry with index 0 is the root; as a link, 0 stands for no statement.
//
// Below an entry stand those in it, in text order. What closes an object is the last entry below
// it, so that a walk from an entry to the first below it, else to the next one behind it, is the
// text.

namespace kiv::detail {

using Index = std::uint32_t;
constexpr Index kRoot = 0;
constexpr Index kNone = 0;

/// Where the halves of a statement stand in its bytes.
struct HalfPlaces {
    std::uint8_t firstBegin = kUnknown;
    std::uint8_t firstLength = 0;
    std::uint8_t secondBegin = 0;
    std::uint8_t behindSecond = 0;  // how many bytes

    /// For halves that are no part of the bytes, and for those too far inside: they are split
    /// again.
    static constexpr std::uint8_t kUnknown = 255;

    bool isKnown() const { return firstBegin != kUnknown; }
};

/// The places of the halves of an object or a parameter on which the reader stands.
HalfPlaces placesOfHalves(const KDXReader& reader);

constexpr bool mayHaveHalves(MiniKDXParser::lineType kind) {
    return kind == MiniKDXParser::lineObject || kind == MiniKDXParser::lineParameter ||
           kind == MiniKDXParser::lineUnrecognised;
}

struct Statement {
    /// Where its bytes are, and whether they stand where they stood in the loaded text.
    enum class State : std::uint8_t { loaded, moved, added, removed };

    Index begin = 0;  // of its bytes
    Index length = 0;
    Index parent = kNone;
    Index first = kNone;
    Index last = kNone;
    Index previous = kNone;
    Index next = kNone;
    Index line = 0;  // of the text that was loaded, from 1
    Index serial = 0;
    std::uint8_t kind = MiniKDXParser::lineBlank;
    bool isComment = false;
    State state = State::loaded;
    HalfPlaces halves;
};
static_assert(sizeof(Statement) == 44, "the memory that a statement takes is promised");

/// The root and below it the statements of a text, whose bytes begin at `offset`.
/// @throws std::length_error when they end beyond what an index can name.
std::vector<Statement> readStatements(std::string_view text, std::size_t offset);

/// Whether the reader's statement is a comment and nothing else.
bool isCommentAlone(const KDXReader& reader);

class StatementTree {
public:
    explicit StatementTree(std::string text);

    const Statement& at(Index index) const { return statements[index]; }
    Index size() const { return static_cast<Index>(statements.size()); }

    bool isChanged() const { return changed; }
    std::string_view loadedText() const { return loaded; }
    /// Takes the text out; nothing may be asked for afterwards.
    std::string takeLoadedText() { return std::move(loaded); }
    std::string_view byteOrderMark() const {
        return std::string_view(loaded).substr(0, markLength);
    }

    std::string_view bytesOf(Index index) const {
        return {textOf(index).data() + statements[index].begin, statements[index].length};
    }
    /// The halves of a statement: views of its bytes or, where they are no part of them, of the
    /// splitter.
    Halves halvesOf(Index index, StatementSplitter& splitter) const {
        Halves halves;
        readHalves(index, splitter, halves.first, halves.second);
        return halves;
    }
    /// The same into two empty views. A value that is returned goes through memory, in words that
    /// are read as pairs, for which the processor waits: half the time of a walk.
    void readHalves(Index index, StatementSplitter& splitter, std::string_view& first,
                    std::string_view& second) const {
        if (!mayHaveHalves(kindOf(index))) return;
        const HalfPlaces& places = statements[index].halves;
        const std::string_view bytes = bytesOf(index);
        if (!places.isKnown()) {
            const Halves split = splitter.split(bytes);
            first = split.first;
            second = split.second;
            return;
        }
        first = {bytes.data() + places.firstBegin, places.firstLength};
        second = {bytes.data() + places.secondBegin,
                  bytes.size() - places.secondBegin - places.behindSecond};
    }

    MiniKDXParser::lineType kindOf(Index index) const {
        return static_cast<MiniKDXParser::lineType>(statements[index].kind);
    }
    bool isObject(Index index) const { return kindOf(index) == MiniKDXParser::lineObject; }
    bool isEnd(Index index) const { return kindOf(index) == MiniKDXParser::lineEnd; }
    bool isClosed(Index object) const { return isEnd(statements[object].last); }
    /// Whether it says something, unlike a comment or a blank line.
    bool isSaying(Index index) const { return kindOf(index) != MiniKDXParser::lineBlank; }

    /// The last entry below this one, however deep; itself where there is none.
    Index lastBelow(Index index) const;
    /// The next in text order that does not stand below this one; kNone behind the last.
    Index nextBehind(Index index) const {
        while (index != kRoot && statements[index].next == kNone) index = statements[index].parent;
        return statements[index].next;
    }
    Index nextInText(Index index) const {
        return statements[index].first != kNone ? statements[index].first : nextBehind(index);
    }
    /// The one before in text order; the root for the first.
    Index previousInText(Index index) const;
    /// The first of the comments directly above that belong to the statement; itself without any.
    Index firstOwned(Index index) const;

    // Changes. Those that may throw come first and change nothing that anybody sees.

    /// Appends bytes for statements to come. @return where they begin.
    std::size_t addBytes(std::string_view bytes);
    std::size_t addedSize() const { return added.size(); }
    /// Drops those that were added last.
    void dropBytes(std::size_t begin) noexcept { added.resize(begin); }

    /// Makes room for so many more statements.
    void reserve(std::size_t count);

    /// Takes the statements below the root of `fragment` in, between `parent` and the child behind
    /// which they come, kNone for the first. Room must have been made.
    /// @return the first of them.
    Index insert(Index parent, Index behind, const std::vector<Statement>& fragment) noexcept;

    /// Gives a statement other bytes, which were added.
    void setBytes(Index index, std::size_t begin, std::size_t length, bool isComment) noexcept;

    /// Takes the siblings from `first` to `last`, and all below them, out of the text.
    void remove(Index first, Index last) noexcept;
    /// Puts them elsewhere, where none of them is.
    void move(Index first, Index last, Index parent, Index behind) noexcept;

private:
    std::string_view textOf(Index index) const {
        return statements[index].state == Statement::State::added ? added : loaded;
    }
    void unlink(Index first, Index last) noexcept;
    void link(Index parent, Index behind, Index first, Index last) noexcept;

    std::string loaded;
    std::string added;
    std::vector<Statement> statements;
    std::size_t markLength;
    bool changed = false;
};

}  // namespace kiv::detail
