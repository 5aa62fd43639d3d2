#pragma once

#include <kiv/ArgumentTypes.h>
#include <kiv/KDXExport.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace kiv {

/// Reads KDX text, given as a list of lines, and reports what it finds to a subclass.
///
/// Derive from it, override the callbacks that matter, and call parse():
///
///     class Outline : public kiv::MiniKDXParser {
///         using MiniKDXParser::MiniKDXParser;
///         void newObject(const std::string& type, const std::string& name) override {
///             std::cout << std::string(2 * objectStack.size(), ' ') << type << ' ' << name <<
///             '\n';
///         }
///     };
///     Outline({"Sample: s1", "  gain = 10", "END"}).parse();
///
/// A parser is used by one thread at a time; different parsers are independent. It can be copied;
/// a move is a copy.
///
/// A callback may throw: the exception leaves parse() unchanged. It may also call setCommands(),
/// change the list behind getCommands(), or call parse(): the walk then goes on with the line
/// after getLineNumber() in the list as it is by then, and ends where that list does.
class KIV_KDX_EXPORT MiniKDXParser {
public:
    /// What a line is, without its comment and its outer blanks.
    enum lineType : int {
        lineUnrecognised = 0,  ///< none of the kinds below
        lineVerbatim = 1,      ///< begins with '!' or '$'; readers pass it over
        lineBlank = 2,         ///< nothing
        lineObject = 3,        ///< "TYPE: NAME", opens an object
        lineParameter = 4,     ///< "NAME = VALUE"
        lineEnd = 5,           ///< "END", closes the innermost object
        lineAction = 6,        ///< begins with '>'
    };

    /// A parser without lines.
    MiniKDXParser();

    /// A parser of a copy of `lines`: one physical line each, without line terminators.
    explicit MiniKDXParser(const std::vector<std::string>& lines);

    MiniKDXParser(const MiniKDXParser& other);
    MiniKDXParser& operator=(const MiniKDXParser& other);
    virtual ~MiniKDXParser();

    /// Replaces the lines with a copy of `lines`. Nothing is parsed; the open objects and the line
    /// number stay as the last walk left them.
    void setCommands(const std::vector<std::string>& lines);

    /// The lines, for change in place. The reference lives as long as the parser.
    std::vector<std::string>& getCommands();
    const std::vector<std::string>& getCommands() const;

    /// Walks the lines from the first to the last, joins continued ones, and calls newObject(),
    /// newParameter(), endObject() and newAction() in the order of the text. May be called any
    /// number of times; each walk begins with no object open.
    ///
    /// Objects that are still open at the end are no error: they stay in objectStack. Neither is
    /// an END while no object is open: endObject() is called, and nothing is closed.
    ///
    /// @throws kiv::data::invalid at the first line that is no KDX, with that line, cut to 80
    /// bytes, in its message. The callbacks made until then stand, objectStack holds the objects
    /// that are open there, and getLineNumber() is the line's index.
    void parse();

    /// Classifies one line by itself and splits it into its two halves.
    ///
    /// @param[out] first overwritten: the type of an object or the name of a parameter, with
    /// simplified whitespace; of an unrecognised line the name characters that it begins with;
    /// else empty.
    /// @param[out] second overwritten: the name of an object, with simplified whitespace, or the
    /// value of a parameter, without outer blanks; else empty.
    ///
    /// `line` may be one of the two outputs.
    static lineType determineLineType(const std::string& line, std::string& first,
                                      std::string& second);

    /// The same classification, without the halves.
    static lineType determineLineType(const std::string& line);

    // A null pointer, or 0, is no text: these do not compile.
    template <typename Line, typename = detail::IfNoText<Line>>
    static lineType determineLineType(Line, std::string&, std::string&) = delete;
    template <typename Line, typename = detail::IfNoText<Line>>
    static lineType determineLineType(Line) = delete;

protected:
    /// An object opens. It is not yet on objectStack, which shows the objects around it.
    ///
    /// The texts that a callback receives live only during the call. The base versions of the
    /// callbacks do nothing.
    virtual void newObject(const std::string& type, const std::string& name);

    /// The innermost open object gets a parameter; or, while none is open, the text itself.
    virtual void newParameter(const std::string& name, const std::string& value);

    /// The innermost open object, still the last of objectStack, is closed.
    virtual void endObject();

    /// An action line, joined where it was continued, otherwise as it stands in the text: with
    /// leading blanks, '>' and comment.
    virtual void newAction(const std::string& action);

    /// The index, from 0, of the physical line being read; during a callback, of the last physical
    /// line of the one being reported. After a complete walk, the number of lines.
    std::size_t getLineNumber() const;

    /// The open objects as (type, name), innermost last. For subclasses to read.
    std::vector<std::pair<std::string, std::string>> objectStack;

private:
    class Reporter;

    std::vector<std::string> commands;
    std::size_t lineNumber = 0;
};

}  // namespace kiv
