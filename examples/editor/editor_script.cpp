// Drives the editor by a script:
//
//     editor_script FILE
//
// One command a line, in UTF-8; a line that begins with # is passed over.
//
//     type TEXT                  TEXT as it stands; \n is a newline, \\ a backslash
//     backspace, delete
//     left, right, word-left, word-right, up, down, home, end
//     shift-left, ...            the same, selecting
//     click X Y
//     drag X0 Y0 X1 Y1           the text's top left corner is 0 0, y points up, capitals are 5 high
//     print                      the text, with | as the caret and [ ] around what is selected
//     png FILE
#include <exception>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <Common/Utf.h>

#include "Editor.h"
#include "Picture.h"

namespace {

struct Command {
    std::string usage;
    /// False where the arguments are not what the command needs.
    std::function<bool(Editor&, const std::string& arguments)> run;
};

using Commands = std::map<std::string, Command>;

/// Numbers with blanks between them; none where something else stands there.
std::vector<double> numbers(const std::string& arguments) {
    std::istringstream in(arguments);
    std::vector<double> found;
    for (double number = 0.0; in >> number;) {
        found.push_back(number);
    }
    return in.eof() ? found : std::vector<double>();
}

bool type(Editor& editor, const std::string& arguments) {
    const std::wstring escaped = common::wideFromUtf8(arguments);
    std::wstring text;
    for (std::size_t i = 0; i < escaped.length(); ++i) {
        if (escaped[i] != L'\\') {
            text += escaped[i];
        } else if (escaped.compare(i, 2, L"\\n") == 0) {
            text += L'\n';
            ++i;
        } else if (escaped.compare(i, 2, L"\\\\") == 0) {
            text += L'\\';
            ++i;
        } else {
            return false;
        }
    }
    editor.insert(text);
    return !text.empty();
}

bool click(Editor& editor, const std::string& arguments) {
    const std::vector<double> at = numbers(arguments);
    if (at.size() != 2) {
        return false;
    }
    editor.click({at[0], at[1]});
    return true;
}

bool drag(Editor& editor, const std::string& arguments) {
    const std::vector<double> at = numbers(arguments);
    if (at.size() != 4) {
        return false;
    }
    editor.drag({at[0], at[1]}, {at[2], at[3]});
    return true;
}

bool png(Editor& editor, const std::string& arguments) {
    if (arguments.empty()) {
        return false;
    }
    writePng(editor, arguments);
    return true;
}

bool print(const Editor& editor) {
    const auto [begin, length] = editor.selection();
    std::wstring shown;
    for (std::uint32_t i = 0; i <= editor.text().length(); ++i) {
        shown += length > 0 && i == begin ? L"[" : L"";
        shown += i == editor.position() ? L"|" : L"";
        shown += length > 0 && i == begin + length ? L"]" : L"";
        if (i < editor.text().length()) {
            const wchar_t unit = editor.text()[i];
            shown += unit == L'\n' ? L"\\n" : unit == L'\\' ? L"\\\\" : std::wstring(1, unit);
        }
    }
    std::cout << common::utf8FromWide(shown) << '\n';
    return true;
}

Commands makeCommands() {
    Commands commands = {
        {"type", {"type TEXT, with \\n for a newline and \\\\ for a backslash", type}},
        {"click", {"click X Y", click}},
        {"drag", {"drag X0 Y0 X1 Y1", drag}},
        {"png", {"png FILE", png}},
    };
    const auto add = [&commands](const std::string& name, const std::function<void(Editor&)>& action) {
        commands[name] = {name, [action](Editor& editor, const std::string& arguments) {
                              if (arguments.empty()) {
                                  action(editor);
                              }
                              return arguments.empty();
                          }};
    };
    add("print", print);
    add("backspace", &Editor::deleteBackward);
    add("delete", &Editor::deleteForward);
    const std::map<std::string, Move> moves = {
        {"left", Move::Left}, {"right", Move::Right},          {"word-left", Move::WordLeft}, {"up", Move::Up},
        {"down", Move::Down}, {"word-right", Move::WordRight}, {"home", Move::LineStart},     {"end", Move::LineEnd},
    };
    for (const auto& [name, where] : moves) {
        add(name, [where = where](Editor& editor) { editor.move(where); });
        add("shift-" + name, [where = where](Editor& editor) { editor.move(where, true); });
    }
    return commands;
}

std::string namesOf(const Commands& commands) {
    std::string names;
    for (const auto& [name, command] : commands) {
        names += (names.empty() ? "" : ", ") + name;
    }
    return names;
}

void runLine(Editor& editor, const Commands& commands, const std::string& line) {
    const std::size_t blank = line.find(' ');
    const auto command = commands.find(line.substr(0, blank));
    if (common::utf8FromWide(common::wideFromUtf8(line)) != line) {
        throw std::runtime_error("the line is not UTF-8: save the script as UTF-8");
    }
    if (command == commands.end()) {
        throw std::runtime_error("\"" + line.substr(0, blank) + "\" is no command: write one of " + namesOf(commands));
    }
    if (!command->second.run(editor, blank == std::string::npos ? "" : line.substr(blank + 1))) {
        throw std::runtime_error("\"" + line + "\" is not how it is written: write " + command->second.usage);
    }
}

/// False where a line fails, which is then said.
bool runScript(Editor& editor, std::istream& script, const std::string& file) {
    const Commands commands = makeCommands();
    int number = 0;
    for (std::string line; std::getline(script, line);) {
        ++number;
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (line.empty() || line.front() == '#') {
            continue;
        }
        try {
            runLine(editor, commands, line);
        } catch (const std::exception& error) {
            std::cerr << file << ':' << number << ": " << error.what() << '\n';
            return false;
        }
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "editor_script: " << argc - 1 << " arguments: write editor_script FILE\n";
        return 2;
    }
    std::ifstream script(argv[1]);
    if (!script) {
        std::cerr << "editor_script: " << argv[1] << " cannot be read: give the file of a script\n";
        return 2;
    }
    const auto engine = fonts::createFontEngine(L"DejaVu Sans");
    Editor editor(*engine, render::makeToken(L"", L"Liberation Sans", 5.0F, {}), {.maxWidth = 120.0});
    return runScript(editor, script, argv[1]) ? 0 : 1;
}
