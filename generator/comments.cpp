#include "comments.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <regex>
#include <string_view>

namespace generator {

namespace {

constexpr char blanks[] = " \t\r\f\v";

std::string_view without_blanks(std::string_view text)
{
    const size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool begins_with(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

bool is_line_comment(std::string_view source)
{
    return begins_with(source, "//");
}

// "/**" and the like; a row of stars is a frame.
bool is_for_documentation(std::string_view source)
{
    const char mark = is_line_comment(source) ? '/' : '*';
    const std::string_view rest = source.substr(2);
    return !rest.empty() && (rest[0] == '!' || rest[0] == mark)
           && (rest.size() == 1 || (rest[1] != mark && rest[1] != '/'));
}

bool tells_of_what_is_before(std::string_view source)
{
    return is_for_documentation(source) && source.size() > 3 && source[3] == '<';
}

bool is_frame(std::string_view line)
{
    line = without_blanks(line);
    return line.size() > 2 && line.find_first_not_of("*-=_#/~+ ") == std::string_view::npos;
}

std::vector<std::string> lines_of(std::string_view source)
{
    const bool is_block = !is_line_comment(source);
    source.remove_prefix(is_for_documentation(source) ? 3 + tells_of_what_is_before(source) : 2);
    if (is_block) {
        // The end, with the stars of a frame.
        source.remove_suffix(1);
        source = source.substr(0, source.find_last_not_of('*') + 1);
    }
    std::vector<std::string> lines;
    for (size_t start = 0; start <= source.size();) {
        const size_t end = std::min(source.find('\n', start), source.size());
        std::string_view line = source.substr(start, end - start);
        const size_t star = is_block && start > 0 ? line.find_first_not_of(blanks) : std::string_view::npos;
        if (star != std::string_view::npos && line[star] == '*') {
            line.remove_prefix(star + 1);
        }
        lines.emplace_back(is_frame(line) ? std::string_view()
                                          : line.substr(0, line.find_last_not_of(blanks) + 1));
        start = end + 1;
    }
    return lines;
}

size_t indent_of(const std::string &line)
{
    return line.find_first_not_of(blanks);
}

// The first line of a comment stands behind the mark, the others have what they are all indented by.
void remove_common_indent(std::vector<std::string> &lines)
{
    size_t common = std::string::npos;
    for (size_t i = 1; i < lines.size(); ++i) {
        common = std::min(common, indent_of(lines[i]));
    }
    for (size_t i = 0; i < lines.size(); ++i) {
        const size_t indent = indent_of(lines[i]);
        lines[i].erase(0, i == 0 || indent == std::string::npos ? std::min(indent, lines[i].size()) : common);
    }
}

struct Rewriting {
    std::regex pattern;
    const char *words;
};

const std::vector<Rewriting> &rewritings()
{
    static const std::vector<Rewriting> table = {
        // What puts a comment in its place in a document, and names what it stands before.
        {std::regex(
             R"(^\s*[\\@](file|ingroup|addtogroup|weakgroup|fn|struct|union|enum|typedef|def|var|name|endcode)"
             R"(|endverbatim|code|verbatim|nosubgrouping|internal|private|public)\b.*$)"),
         ""},
        {std::regex(R"(^\s*[\\@][{}]\s*$)"), ""},
        {std::regex(
             R"(^\s*[\\@](brief|short|details|remarks?|par|page|section|subsection|defgroup \S+)\b\s*)"),
         ""},
        {std::regex(R"(^\s*[\\@]t?param\s*(\[[^\]]*\])?\s*(\S+)\s*)"), "$2 $1: "},
        {std::regex(R"(^\s*[\\@]retval\s+(\S+)\s*)"), "$1: "},
        {std::regex(R"(^\s*[\\@](returns?|result)\b\s*)"), "Returns: "},
        {std::regex(R"(^\s*[\\@](note|warning|attention|deprecated|since|pre|post|todo|bug)\b\s*)"), "$1: "},
        {std::regex(R"(^\s*[\\@](see|sa)\b\s*)"), "See "},
        {std::regex(R"(^\s*[\\@](li|arg)\b\s*)"), "- "},
        {std::regex(R"([\\@](c|p|a|b|e|em|ref|link)\s+(\S+))"), "$2"},
        {std::regex(R"(\s*[\\@]endlink\b)"), ""},
        {std::regex(R"(</?(b|i|em|tt|code|p|br|pre)\s*/?>)"), ""},
    };
    return table;
}

bool has_commands(const std::string &line)
{
    return line.find_first_of("\\@<") != std::string::npos;
}

// The words of a documentation tool's commands; a line that said nothing else is gone.
void replace_commands(std::vector<std::string> &lines)
{
    std::vector<std::string> kept;
    for (std::string &line : lines) {
        const bool had_words = !line.empty();
        if (has_commands(line)) {
            for (const Rewriting &rewriting : rewritings()) {
                line = std::regex_replace(line, rewriting.pattern, rewriting.words);
            }
            // A parameter without a direction has left a blank.
            static const std::regex blank_before_colon(R"(^(\S+) :)");
            line = std::regex_replace(line, blank_before_colon, "$1:");
        }
        line.erase(line.find_last_not_of(blanks) + 1);
        if (!had_words || !line.empty()) {
            kept.push_back(std::move(line));
        }
    }
    lines = std::move(kept);
}

std::string joined(const std::vector<std::string> &lines)
{
    std::string text;
    bool empty = false;
    for (const std::string &line : lines) {
        if (line.empty()) {
            empty = !text.empty();
        } else {
            text += (text.empty() ? "" : empty ? "\n\n" : "\n") + line;
            empty = false;
        }
    }
    return text;
}

std::string clean(std::vector<std::string> lines, bool is_document)
{
    remove_common_indent(lines);
    if (is_document) {
        replace_commands(lines);
    }
    return joined(lines);
}

bool is_licence(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return std::tolower(letter); });
    return text.find("copyright") != std::string::npos || text.find("spdx-license") != std::string::npos;
}

struct Extent {
    CXFile file = nullptr;
    unsigned first_line = 0, last_line = 0, column = 0, start = 0, end = 0;
};

Extent extent_of(CXSourceRange range)
{
    Extent extent;
    clang_getExpansionLocation(clang_getRangeStart(range), &extent.file, &extent.first_line, &extent.column,
                               &extent.start);
    clang_getExpansionLocation(clang_getRangeEnd(range), nullptr, &extent.last_line, nullptr, &extent.end);
    return extent;
}

std::string name_of(CXFile handle)
{
    CXString text = clang_getFileName(handle);
    const char *characters = clang_getCString(text);
    std::string name = characters ? characters : "";
    clang_disposeString(text);
    return name;
}

// Whether nothing but the end of a declaration stands in a text.
bool ends_declaration(std::string_view text, char separator, bool may_end_line)
{
    const size_t line_end = text.find('\n');
    const std::string_view line = text.substr(0, line_end);
    const size_t end = line.find(separator);
    const bool is_one_line =
        line_end == std::string_view::npos
        || (may_end_line && text.find_first_not_of(" \t\r\n", line_end) == std::string_view::npos);
    return is_one_line && line.substr(0, end).find_first_of("{};") == std::string_view::npos
           && (end == std::string_view::npos || without_blanks(line.substr(end + 1)).empty());
}

}  // namespace

std::string text_of_comment(const std::string &source)
{
    return clean(lines_of(source), is_for_documentation(source));
}

bool Comments::File::is_empty(unsigned line) const
{
    if (line == 0 || line > lines.size()) {
        return true;
    }
    const size_t start = lines[line - 1], end = line < lines.size() ? lines[line] : text.size();
    return text.find_first_not_of(" \t\r\f\v\n", start) >= end;
}

bool Comments::File::is_filled(unsigned first, unsigned end) const
{
    while (first < end && !is_empty(first)) {
        ++first;
    }
    return first >= end;
}

unsigned Comments::File::first_of_gap(unsigned line, bool over_empty_lines) const
{
    while (over_empty_lines && line > 1 && is_empty(line - 1)) {
        --line;
    }
    return line;
}

Comments::File Comments::read(CXFile handle) const
{
    File file;
    size_t size = 0;
    const char *text = clang_getFileContents(unit_, handle, &size);
    file.text.assign(text ? text : "", text ? size : 0);
    file.lines.push_back(0);
    for (size_t end = file.text.find('\n'); end != std::string::npos; end = file.text.find('\n', end + 1)) {
        file.lines.push_back(end + 1);
    }

    CXToken *tokens = nullptr;
    unsigned count = 0;
    const CXSourceRange all =
        clang_getRange(clang_getLocationForOffset(unit_, handle, 0),
                       clang_getLocationForOffset(unit_, handle, static_cast<unsigned>(size)));
    clang_tokenize(unit_, all, &tokens, &count);
    std::vector<std::string> lines;  // of the piece that is being read
    for (unsigned i = 0; i < count; ++i) {
        if (clang_getTokenKind(tokens[i]) != CXToken_Comment) {
            continue;
        }
        const Extent extent = extent_of(clang_getTokenExtent(unit_, tokens[i]));
        const std::string source = file.text.substr(extent.start, extent.end - extent.start);
        Piece piece;
        piece.first_line = extent.first_line;
        piece.last_line = extent.last_line;
        piece.column = extent.column;
        piece.start = extent.start;
        piece.end = extent.end;
        piece.alone = without_blanks(std::string_view(file.text).substr(file.lines[piece.first_line - 1],
                                                                        piece.column - 1))
                          .empty();
        piece.is_document = is_for_documentation(source);
        piece.is_behind = tells_of_what_is_before(source);
        std::vector<std::string> said = lines_of(source);
        // Lines of their own go on with what the line above says.
        Piece *before = file.pieces.empty() ? nullptr : &file.pieces.back();
        const bool goes_on =
            before && piece.alone && before->last_line + 1 == piece.first_line
            && before->column == piece.column && before->is_behind == piece.is_behind
            && (is_line_comment(source) || !before->alone)
            && begins_with(std::string_view(file.text).substr(before->start), source.substr(0, 2));
        if (goes_on) {
            lines.insert(lines.end(), said.begin(), said.end());
            before->last_line = piece.last_line;
            before->end = piece.end;
        } else {
            lines = std::move(said);
            file.pieces.push_back(std::move(piece));
        }
        file.pieces.back().text = clean(lines, file.pieces.back().is_document);
    }
    clang_disposeTokens(unit_, tokens, count);
    find_own_comment(file);
    return file;
}

void Comments::find_own_comment(File &file)
{
    size_t before = 0;
    for (const Piece &piece : file.pieces) {
        // Directives may stand before it, declarations may not.
        for (size_t start = before; start < piece.start;) {
            const size_t end = std::min(file.text.find('\n', start), piece.start);
            const std::string_view line =
                without_blanks(std::string_view(file.text).substr(start, end - start));
            if (!line.empty() && line[0] != '#') {
                return;
            }
            start = end + 1;
        }
        const size_t next =
            piece.last_line < file.lines.size() ? file.lines[piece.last_line] : file.text.size();
        const std::string_view rest =
            without_blanks(std::string_view(file.text).substr(next, file.text.find('\n', next) - next));
        const bool stands_alone = file.is_empty(piece.last_line + 1)
                                  || (rest[0] == '#' && rest.find("define") == std::string_view::npos);
        if (piece.alone && stands_alone && !piece.text.empty() && !is_licence(piece.text)) {
            file.comment = piece.text;
            return;
        }
        before = piece.end;
    }
}

const Comments::File &Comments::file(CXFile handle)
{
    auto [place, is_new] = files_.try_emplace(name_of(handle));
    if (is_new) {
        place->second = read(handle);
    }
    return place->second;
}

const std::string &Comments::of_file(const std::string &path)
{
    static const std::string nothing;
    CXFile handle = clang_getFile(unit_, path.c_str());
    return handle ? file(handle).comment : nothing;
}

Comment Comments::of(CXCursor declaration, Row &row)
{
    const Extent extent = extent_of(clang_getCursorExtent(declaration));
    if (!extent.file) {
        return {};
    }
    const File &file = this->file(extent.file);
    const std::string path = name_of(extent.file);
    Comment comment;

    const auto next =
        std::upper_bound(file.pieces.begin(), file.pieces.end(), extent.start,
                         [](unsigned start, const Piece &piece) { return start < piece.start; });
    const Piece *above = next == file.pieces.begin() ? nullptr : &*(next - 1);
    if (above && (!above->alone || above->is_behind)) {
        above = nullptr;
    }
    const bool follows = row.file == path && row.last_line <= extent.first_line
                         && !(above && above->first_line > row.last_line)
                         && file.is_filled(row.last_line + 1, extent.first_line);
    if (above && above->last_line + 1 >= file.first_of_gap(extent.first_line, above->is_document)) {
        comment.above = above->text;
        comment.line = above->first_line;
    } else if (follows) {
        comment.above = row.comment.above;
        comment.line = row.comment.line;
    }

    const char separator = clang_getCursorKind(declaration) == CXCursor_EnumConstantDecl ? ',' : ';';
    const auto beside =
        std::find_if(next, file.pieces.end(), [&](const Piece &piece) { return piece.start >= extent.end; });
    if (beside != file.pieces.end() && (!beside->alone || beside->is_behind)
        && ends_declaration(std::string_view(file.text).substr(extent.end, beside->start - extent.end),
                            separator, beside->is_behind)) {
        comment.beside = beside->text;
    }
    row.file = path;
    row.last_line = extent.last_line;
    row.comment = comment;
    return comment;
}

}  // namespace generator
