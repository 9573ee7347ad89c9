// SPDX-License-Identifier: GPL-3.0-or-later
// Walks the sources of all rooms and fails on an include that the plan of the house forbids: an arrow up, the engine
// and the other rooms reaching for each other, a widget in logic, an operating system's header outside platform/,
// anything but the standard library in engine/. The linker finds some of this too, but late, and says it in riddles.
//
//     include_check ROOT [QT_FOLDER...]   ROOT the source tree; Qt's include folders, to know what belongs to QtCore
//     include_check --self-test           proves on small made-up trees that every rule can fail
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <random>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace fs = std::filesystem;

namespace {

using Names = std::set<std::string>;

/// What each room may include besides itself.
const std::map<std::string, Names>& allowed()
{
    static const std::map<std::string, Names> table = {
        {"platform", {}},
        {"deck", {"platform"}},
        {"run", {"platform", "deck"}},
        {"results", {"platform", "deck", "run"}},
        {"iterate", {"platform", "deck", "run"}},
        {"tools", {"platform", "deck", "run"}},
        {"graphics", {"platform", "deck", "run", "results"}},
        {"shell", {"platform", "deck", "run", "results", "iterate", "tools", "graphics"}},
        {"app", {"platform", "deck", "run", "results", "iterate", "tools", "graphics", "shell"}},
        {"engine", {}},
    };
    return table;
}

bool isRoom(const std::string& name)
{
    return allowed().count(name) > 0;
}

const Names kStandardHeaders = {"algorithm",
                                "any",
                                "array",
                                "atomic",
                                "barrier",
                                "bit",
                                "bitset",
                                "cassert",
                                "cctype",
                                "cerrno",
                                "cfenv",
                                "cfloat",
                                "charconv",
                                "chrono",
                                "cinttypes",
                                "climits",
                                "clocale",
                                "cmath",
                                "codecvt",
                                "compare",
                                "complex",
                                "concepts",
                                "condition_variable",
                                "coroutine",
                                "csetjmp",
                                "csignal",
                                "cstdarg",
                                "cstddef",
                                "cstdint",
                                "cstdio",
                                "cstdlib",
                                "cstring",
                                "ctime",
                                "cuchar",
                                "cwchar",
                                "cwctype",
                                "deque",
                                "exception",
                                "execution",
                                "filesystem",
                                "format",
                                "forward_list",
                                "fstream",
                                "functional",
                                "future",
                                "initializer_list",
                                "iomanip",
                                "ios",
                                "iosfwd",
                                "iostream",
                                "istream",
                                "iterator",
                                "latch",
                                "limits",
                                "list",
                                "locale",
                                "map",
                                "memory",
                                "memory_resource",
                                "mutex",
                                "new",
                                "numbers",
                                "numeric",
                                "optional",
                                "ostream",
                                "queue",
                                "random",
                                "ranges",
                                "ratio",
                                "regex",
                                "scoped_allocator",
                                "semaphore",
                                "set",
                                "shared_mutex",
                                "source_location",
                                "span",
                                "sstream",
                                "stack",
                                "stdexcept",
                                "stop_token",
                                "streambuf",
                                "string",
                                "string_view",
                                "syncstream",
                                "system_error",
                                "thread",
                                "tuple",
                                "type_traits",
                                "typeindex",
                                "typeinfo",
                                "unordered_map",
                                "unordered_set",
                                "utility",
                                "valarray",
                                "variant",
                                "vector",
                                "version"};

const Names kSystemHeaders = {
    "unistd.h",  "fcntl.h", "dirent.h", "pthread.h", "poll.h",    "termios.h", "dlfcn.h",   "pwd.h",     "grp.h",
    "glob.h",    "spawn.h", "syslog.h", "signal.h",  "strings.h", "sched.h",   "windows.h", "Windows.h", "winsock2.h",
    "winsock.h", "io.h",    "direct.h", "process.h", "conio.h",   "shlobj.h",  "tchar.h"};

bool isSystemHeader(const std::string& name)
{
    for (const char* folder : {"sys/", "netinet/", "arpa/", "linux/", "mach/", "net/"})
        if (name.rfind(folder, 0) == 0)
            return true;
    return kSystemHeaders.count(name) > 0;
}

std::string textOf(const fs::path& file)
{
    std::ifstream in(file, std::ios::binary);
    std::ostringstream all;
    all << in.rdbuf();
    return all.str();
}

struct Include
{
    int line = 0;
    bool quoted = false;
    std::string name;
};

/// The includes of a source, those in a block comment or behind `//` left out.
std::vector<Include> includesOf(const std::string& text)
{
    static const std::regex pattern(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
    std::vector<Include> found;
    std::istringstream lines(text);
    std::string line;
    bool inComment = false;
    for (int number = 1; std::getline(lines, line); ++number) {
        if (inComment) {
            const size_t close = line.find("*/");
            if (close == std::string::npos)
                continue;
            line.erase(0, close + 2);
            inComment = false;
        }
        std::smatch match;
        if (line.find('#') != std::string::npos && std::regex_search(line, match, pattern))
            found.push_back({number, match[1] == "\"", match[2]});
        const size_t open = line.rfind("/*");
        const size_t lineComment = line.find("//");
        inComment = open != std::string::npos && line.find("*/", open) == std::string::npos &&
                    (lineComment == std::string::npos || lineComment > open);
    }
    return found;
}

bool isSource(const fs::path& file)
{
    static const Names kinds = {".h", ".hpp", ".cpp", ".cc", ".mm", ".inc"};
    return kinds.count(file.extension().string()) > 0;
}

std::vector<fs::path> sourcesBelow(const fs::path& folder)
{
    std::vector<fs::path> found;
    if (fs::is_directory(folder))
        for (const auto& entry : fs::recursive_directory_iterator(folder))
            if (entry.is_regular_file() && isSource(entry.path()))
                found.push_back(entry.path());
    std::sort(found.begin(), found.end());
    return found;
}

/// One call of a CMake file: the command and its words, comments left out.
struct CMakeCall
{
    std::string command;
    std::vector<std::string> words;
};

std::vector<CMakeCall> callsOf(const std::string& cmake)
{
    std::string bare;
    std::istringstream lines(cmake);
    for (std::string line; std::getline(lines, line);)
        bare += line.substr(0, line.find('#')) + '\n';
    static const std::regex pattern(R"((\w+)\s*\(([^()]*)\))");
    std::vector<CMakeCall> calls;
    for (std::sregex_iterator call(bare.begin(), bare.end(), pattern), end; call != end; ++call) {
        std::istringstream words((*call)[2]);
        calls.push_back({(*call)[1], {std::istream_iterator<std::string>(words), {}}});
    }
    return calls;
}

bool namesScreens(const CMakeCall& call)
{
    static const std::string ending = "_screens";
    if (call.command == "kalvo_screens_room")
        return true;
    if ((call.command != "add_library" && call.command != "target_sources") || call.words.empty())
        return false;
    const std::string& target = call.words[0];
    return target.size() > ending.size() && target.compare(target.size() - ending.size(), ending.size(), ending) == 0;
}

/// The words of all calls that build a library of screens, with the file's own lists (set, list(APPEND)) filled in.
std::vector<std::string> wordsOfScreens(const std::string& cmake)
{
    std::map<std::string, std::vector<std::string>> lists;
    std::vector<std::string> found;
    for (const CMakeCall& call : callsOf(cmake)) {
        std::vector<std::string> words;
        for (const std::string& word : call.words) {
            const bool isList = word.size() > 3 && word.rfind("${", 0) == 0 && word.back() == '}';
            const auto list = isList ? lists.find(word.substr(2, word.size() - 3)) : lists.end();
            if (list != lists.end())
                words.insert(words.end(), list->second.begin(), list->second.end());
            else
                words.push_back(word);
        }
        if (call.command == "set" && !words.empty())
            lists[words[0]].assign(words.begin() + 1, words.end());
        else if (call.command == "list" && words.size() > 1 && words[0] == "APPEND")
            lists[words[1]].insert(lists[words[1]].end(), words.begin() + 2, words.end());
        else if (namesScreens(call))
            found.insert(found.end(), words.begin(), words.end());
    }
    return found;
}

class Check
{
public:
    Check(fs::path root, std::vector<fs::path> qtFolders) : m_root(std::move(root)), m_qtFolders(std::move(qtFolders))
    {
    }

    std::vector<std::string> run()
    {
        for (const auto& [room, below] : allowed())
            findScreens(room);
        for (const auto& [room, below] : allowed())
            for (const fs::path& file : sourcesBelow(m_root / room))
                checkRoomFile(room, file);
        for (const char* folder : {"tests", "bench"})
            for (const fs::path& file : sourcesBelow(m_root / folder))
                checkTestFile(file);
        return m_faults;
    }

    int files() const { return m_files; }

private:
    std::string nameOf(const fs::path& file) const { return fs::relative(file, m_root).generic_string(); }

    void fault(const fs::path& file, const Include& include, const std::string& why)
    {
        m_faults.push_back(nameOf(file) + ':' + std::to_string(include.line) + ": " + include.name + ": " + why);
    }

    /// Screens are what a room's CMakeLists.txt builds into its library of screens, with the headers of the same names.
    void findScreens(const std::string& room)
    {
        for (const std::string& word : wordsOfScreens(textOf(m_root / room / "CMakeLists.txt"))) {
            const fs::path source(word);
            if (!isSource(source))
                continue;
            m_screens.insert(room + '/' + word);
            m_screens.insert(room + '/' + fs::path(source).replace_extension(".h").generic_string());
        }
    }

    bool isScreen(const std::string& name) const { return m_screens.count(name) > 0; }

    /// Whether a Qt header belongs to QtCore. Without Qt's folders only the plain cases are known.
    bool isQtCore(const std::string& name) const
    {
        const size_t slash = name.find('/');
        if (slash != std::string::npos)
            return name.rfind("QtCore/", 0) == 0;
        if (name == "QtCore" || name == "QtGlobal")
            return true;
        bool known = false;
        for (const fs::path& folder : m_qtFolders) {
            for (const fs::path& core : {folder, folder / "QtCore"}) {
                known = known || fs::exists(core / "QObject");
                if (fs::exists(core / "QObject") && fs::exists(core / name))
                    return true;
            }
        }
        static const Names gui = {"QtGui",      "QtWidgets",    "QWidget",      "QMessageBox", "QFileDialog",
                                  "QColor",     "QFont",        "QImage",       "QPixmap",     "QPainter",
                                  "QDialog",    "QApplication", "QFontMetrics", "QTableView",  "QKeyEvent",
                                  "QClipboard", "QIcon",        "QAction"};
        return !known && gui.count(name) == 0;
    }

    static bool isQt(const std::string& name)
    {
        return name.rfind("Qt", 0) == 0 ||
               (name.size() > 1 && name[0] == 'Q' && std::isupper(static_cast<unsigned char>(name[1])) &&
                name.find('.') == std::string::npos);
    }

    void checkRoomFile(const std::string& room, const fs::path& file)
    {
        ++m_files;
        const std::string name = nameOf(file);
        const bool logic = room != "engine" && room != "app" && !isScreen(name);
        for (const Include& include : includesOf(textOf(file))) {
            if (include.name.find("..") != std::string::npos)
                fault(file, include, "includes are written from the source root");
            if (room != "platform" && isSystemHeader(include.name))
                fault(file, include, "headers of an operating system belong to platform/");
            const std::string other = include.name.substr(0, include.name.find('/'));
            if (include.name.find('/') != std::string::npos && isRoom(other) && other != room &&
                allowed().at(room).count(other) == 0)
                fault(file, include, room + "/ may not know " + other + "/");
            if (room == "engine")
                checkEngineInclude(file, include);
            if (!logic)
                continue;
            if (isQt(include.name) && !isQtCore(include.name))
                fault(file, include, "logic knows QtCore alone; a screen is listed in the room's library of screens");
            if (isScreen(include.name))
                fault(file, include, "logic may not know a screen");
        }
    }

    void checkEngineInclude(const fs::path& file, const Include& include)
    {
        if (include.quoted ? include.name.rfind("engine/", 0) != 0 : kStandardHeaders.count(include.name) == 0)
            fault(file, include, "the engine stands on the standard library alone");
    }

    /// The tests and benches of the engine and those of the other rooms keep the same wall. Benches may start both.
    void checkTestFile(const fs::path& file)
    {
        ++m_files;
        const std::string name = nameOf(file);
        const bool ofEngine = name.rfind("tests/engine/", 0) == 0;
        for (const Include& include : includesOf(textOf(file))) {
            const std::string other = include.name.substr(0, include.name.find('/'));
            const bool anotherRoom = include.name.find('/') != std::string::npos && isRoom(other);
            if (ofEngine && ((anotherRoom && other != "engine") || isQt(include.name)))
                fault(file, include, "tests of the engine know the engine alone");
            if (!ofEngine && name.rfind("tests/", 0) == 0 && anotherRoom && other == "engine")
                fault(file, include, "only tests/engine/ may know engine/");
        }
    }

    fs::path m_root;
    std::vector<fs::path> m_qtFolders;
    Names m_screens;
    std::vector<std::string> m_faults;
    int m_files = 0;
};

// -- Self test -----------------------------------------------------------------------------------------------------

struct Case
{
    const char* name;
    const char* file;
    const char* text;
    int faults;
};

const Case kCases[] = {
    {"arrow down", "run/A.cpp", "#include \"deck/Deck.h\"\n#include <QString>\n", 0},
    {"own room", "deck/A.cpp", "#include \"deck/Deck.h\"\n", 0},
    {"arrow up", "deck/A.cpp", "#include \"run/RunDriver.h\"\n", 1},
    {"arrow sideways", "iterate/A.cpp", "#include \"results/Form10.h\"\n", 1},
    {"arrow up with blanks", "platform/A.h", "  #  include   \"deck/Deck.h\"\n", 1},
    {"way round through a parent", "deck/A.cpp", "#include \"../run/RunDriver.h\"\n", 1},
    {"commented out", "deck/A.cpp", "// #include \"run/A.h\"\n/* old:\n#include \"run/A.h\"\n*/\n", 0},
    {"behind a comment", "deck/A.cpp", "/* a\n b */\n#include \"run/A.h\"\n", 1},
    {"engine reaches out", "engine/A.cpp", "#include \"platform/text.h\"\n", 2},
    {"engine with Qt", "engine/A.cpp", "#include <QString>\n", 1},
    {"engine with a library", "engine/A.cpp", "#include <boost/array.hpp>\n", 1},
    {"engine with standard headers", "engine/A.cpp", "#include <vector>\n#include \"engine/cards/Card.h\"\n", 0},
    {"room reaches for the engine", "run/A.cpp", "#include \"engine/cards/Card.h\"\n", 1},
    {"test reaches for the engine", "tests/run/A.cpp", "#include \"engine/cards/Card.h\"\n", 1},
    {"test of the engine", "tests/engine/A.cpp", "#include \"engine/A.h\"\n#include <gtest/gtest.h>\n", 0},
    {"test of the engine reaches out", "tests/engine/A.cpp", "#include \"run/A.h\"\n", 1},
    {"widget in logic", "deck/A.cpp", "#include <QMessageBox>\n", 1},
    {"module header in logic", "deck/A.h", "#include <QtWidgets/QLabel>\n", 1},
    {"core in logic", "deck/A.cpp", "#include <QtCore/QString>\n#include <QHash>\n", 0},
    {"widget in a screen", "deck/Form1.cpp", "#include <QMessageBox>\n", 0},
    {"widget in a screen that is listed by name", "deck/Form2.cpp", "#include <QMessageBox>\n", 0},
    {"widget in a screen that was appended", "deck/Form3.h", "#include <QMessageBox>\n", 0},
    {"widget in a screen of a plain library", "deck/Form4.cpp", "#include <QMessageBox>\n", 0},
    {"widget in a screen's header", "deck/Form1.h", "#include <QWidget>\n", 0},
    {"screen named in a comment of the list only", "deck/Ghost.cpp", "#include <QWidget>\n", 1},
    {"logic knows a screen", "deck/A.cpp", "#include \"deck/Form1.h\"\n", 1},
    {"POSIX outside platform", "run/A.cpp", "#include <unistd.h>\n#include <sys/stat.h>\n", 2},
    {"Windows outside platform", "app/main.cpp", "#include <windows.h>\n", 1},
    {"POSIX in platform", "platform/A.cpp", "#include <unistd.h>\n#include <sys/stat.h>\n", 0},
};

void write(const fs::path& file, const std::string& text)
{
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << text;
}

int selfTest()
{
    const fs::path tree = fs::temp_directory_path() / ("include_check_" + std::to_string(std::random_device{}()));
    int failed = 0;
    for (const Case& c : kCases) {
        fs::remove_all(tree);
        write(tree / "deck/CMakeLists.txt", "kalvo_logic_room(NAME deck\n  SOURCES Deck.cpp)\n"
                                            "set(screens # Ghost.cpp\n  Form1.cpp)\nlist(APPEND screens Form3.cpp)\n"
                                            "kalvo_screens_room(NAME deck SOURCES\n  Form2.cpp ${screens})\n"
                                            "add_library(deck_screens STATIC Form4.cpp)\n");
        write(tree / c.file, c.text);
        const auto faults = Check(tree, {}).run();
        if (static_cast<int>(faults.size()) == c.faults)
            continue;
        ++failed;
        std::cerr << c.name << ": expected " << c.faults << " fault(s), found " << faults.size() << '\n';
        for (const std::string& fault : faults)
            std::cerr << "    " << fault << '\n';
    }
    fs::remove_all(tree);
    std::cout << std::size(kCases) - static_cast<size_t>(failed) << " of " << std::size(kCases) << " cases passed\n";
    return failed == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc < 2) {
        std::cerr << "usage: include_check ROOT [QT_FOLDER...] | include_check --self-test\n";
        return 2;
    }
    if (std::string_view(argv[1]) == "--self-test")
        return selfTest();
    Check check(argv[1], std::vector<fs::path>(argv + 2, argv + argc));
    const auto faults = check.run();
    for (const std::string& fault : faults)
        std::cerr << fault << '\n';
    std::cout << check.files() << " files, " << faults.size() << " fault(s)\n";
    // A check that looked at nothing has shown nothing.
    return faults.empty() && check.files() > 0 ? 0 : 1;
}
