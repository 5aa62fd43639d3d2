// Walks KDX text and prints an outline of it: what stands where, actions included.
#include <kiv/Error.h>
#include <kiv/MiniKDXParser.h>

#include <iostream>

namespace {

class Outline : public kiv::MiniKDXParser {
public:
    using MiniKDXParser::MiniKDXParser;

    /// The number of the line that the walk has come to, counted from 1.
    std::size_t lineReached() const { return getLineNumber() + 1; }

protected:
    void newObject(const std::string& type, const std::string& name) override {
        print(type + ' ' + name);
    }
    void newParameter(const std::string& name, const std::string& /*value*/) override {
        print('.' + name);
    }
    void newAction(const std::string& action) override { print(action); }

private:
    void print(const std::string& text) const {
        std::cout << lineReached() << '\t' << std::string(2 * objectStack.size(), ' ') << text
                  << '\n';
    }
};

}  // namespace

int main() {
    std::vector<std::string> lines;
    for (std::string line; std::getline(std::cin, line);) lines.push_back(line);
    Outline outline(lines);
    try {
        outline.parse();
    } catch (const kiv::Error& error) {
        std::cerr << "line " << outline.lineReached() << ": " << error.message() << '\n';
        return 1;
    }
}
