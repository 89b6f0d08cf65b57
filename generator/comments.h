// Which comment of a header belongs to which declaration.
//
// A comment in lines of its own tells of the declaration below it, and of those of the same sort that follow
// without an empty line or another comment between them. One behind a declaration, in its line, tells of that
// alone. Comments for documentation tools are read likewise: one that begins with "<" tells of what stands
// before it, any other may be separated by empty lines from what it tells of; of their commands the words stay.
#pragma once

#include "declarations.h"

#include <clang-c/Index.h>

#include <map>
#include <string>
#include <vector>

namespace generator {

/// What a comment says: without its marks, frames and commands, and without what its lines are all indented by.
std::string text_of_comment(const std::string &source);

/// Declarations of one sort that may share a comment: the functions of a header, the members of a record.
struct Row {
    std::string file;
    unsigned last_line = 0;  ///< of the one before
    Comment comment;         ///< of the one before
};

class Comments {
public:
    explicit Comments(CXTranslationUnit unit) : unit_(unit) {}

    /// What is said of a declaration, the next of that row.
    Comment of(CXCursor declaration, Row &row);

    /// What a file says of itself: its first comment that is followed by no declaration and is no licence.
    const std::string &of_file(const std::string &path);

private:
    struct Piece {
        unsigned first_line = 0, last_line = 0, column = 0;
        size_t start = 0, end = 0;
        bool alone = false;        ///< whether no code stands before it in its line
        bool is_behind = false;    ///< whether it says that it tells of what stands before it
        bool is_document = false;  ///< whether it is for a documentation tool
        std::string text;
    };
    struct File {
        std::string text;
        std::vector<size_t> lines;  ///< where each starts; the first has number 1
        std::vector<Piece> pieces;  ///< in their order
        std::string comment;        ///< of the file itself

        bool is_empty(unsigned line) const;
        /// Whether no line from `first` on and before `end` is empty.
        bool is_filled(unsigned first, unsigned end) const;
        /// That line, or the first of the empty ones above it.
        unsigned first_of_gap(unsigned line, bool over_empty_lines) const;
    };

    const File &file(CXFile handle);
    File read(CXFile handle) const;
    static void find_own_comment(File &file);

    CXTranslationUnit unit_;
    std::map<std::string, File> files_;
};

}  // namespace generator
