#include "header_reader.h"

#include "comments.h"
#include "cxx_words.h"
#include "errors.h"

#include <clang-c/Index.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <tuple>
#include <utility>

namespace generator {

namespace {

std::string take(CXString text)
{
    const char *characters = clang_getCString(text);
    std::string copy = characters ? characters : "";
    clang_disposeString(text);
    return copy;
}

/// As C names it.
std::string name_of(CXCursor cursor)
{
    return name_in_c(take(clang_getCursorSpelling(cursor)));
}

/// With the namespaces and classes that it stands in: "MdioHamImpl::HamImpl::Ptr".
std::string qualified_name(CXCursor declaration)
{
    std::string name = name_of(declaration);
    for (CXCursor scope = clang_getCursorSemanticParent(declaration);
         clang_getCursorKind(scope) == CXCursor_Namespace || clang_getCursorKind(scope) == CXCursor_ClassDecl
         || clang_getCursorKind(scope) == CXCursor_StructDecl;
         scope = clang_getCursorSemanticParent(scope)) {
        name = name_of(scope) + "::" + name;
    }
    return name;
}

constexpr char main_file[] = "bound_headers.cpp";

struct Position {
    std::string file;
    unsigned line = 0, column = 0;
};

/// A message of the compiler.
struct CompilerError {
    Position position;
    std::string text;
    std::vector<Position> notes;  ///< what its notes point at
};

class TranslationUnit {
public:
    enum class Language { C, Cxx };

    TranslationUnit(const std::string &text, const HeaderSource &source, Language language = Language::Cxx)
    {
        // Each error counts: it says what a macro is not.
        std::vector<std::string> options = {"-ferror-limit=0", "-x"};
        if (language == Language::C) {
            options.insert(options.end(), {"c", "-std=gnu17"});
        } else {
            options.insert(options.end(), {"c++", "-std=c++17", "-fno-operator-names"});
        }
        options.insert(options.end(), source.flags.begin(), source.flags.end());
        for (const auto *directories : {&source.include_directories, &source.own_directories}) {
            for (const std::string &directory : *directories) {
                options.push_back("-I" + directory);
            }
        }
        for (const std::string &directory : source.system_directories) {
            options.insert(options.end(), {"-isystem", directory});
        }
        std::vector<const char *> arguments;
        arguments.reserve(options.size());
        for (const std::string &option : options) {
            arguments.push_back(option.c_str());
        }
        CXUnsavedFile file{main_file, text.c_str(), static_cast<unsigned long>(text.size())};
        index_ = clang_createIndex(0, 0);
        unit_ = clang_parseTranslationUnit(
            index_, main_file, arguments.data(), static_cast<int>(arguments.size()), &file, 1,
            CXTranslationUnit_DetailedPreprocessingRecord | CXTranslationUnit_SkipFunctionBodies
                | CXTranslationUnit_KeepGoing);
        if (!unit_) {
            throw std::runtime_error("libclang cannot read the headers");
        }
    }
    ~TranslationUnit()
    {
        clang_disposeTranslationUnit(unit_);
        clang_disposeIndex(index_);
    }
    TranslationUnit(const TranslationUnit &) = delete;
    TranslationUnit &operator=(const TranslationUnit &) = delete;

    CXTranslationUnit get() const { return unit_; }

    /// Bytes of a long, which are a pointer's on all systems that are built for.
    long long long_size() const
    {
        CXTargetInfo target = clang_getTranslationUnitTargetInfo(unit_);
        const int bits = clang_TargetInfo_getPointerWidth(target);
        clang_TargetInfo_dispose(target);
        return bits / 8;
    }

    /// Paths of the headers that were read, without the links and dots by which the compiler came to them.
    std::vector<std::string> files() const
    {
        std::vector<std::string> files;
        clang_getInclusions(
            unit_,
            [](CXFile file, CXSourceLocation *, unsigned depth, CXClientData data) {
                if (depth > 0) {
                    static_cast<std::vector<std::string> *>(data)->push_back(
                        std::filesystem::canonical(take(clang_getFileName(file))));
                }
            },
            &files);
        return files;
    }

    /// Those that a header of the main file includes, itself first; each with whether it is in a system's folder.
    std::vector<std::pair<std::filesystem::path, bool>> inclusions() const
    {
        std::pair<CXTranslationUnit, std::vector<std::pair<std::filesystem::path, bool>>> found(unit_, {});
        clang_getInclusions(
            unit_,
            [](CXFile file, CXSourceLocation *, unsigned depth, CXClientData data) {
                auto &[unit, paths] = *static_cast<decltype(found) *>(data);
                if (depth > 0) {
                    const CXSourceLocation begin = clang_getLocationForOffset(unit, file, 0);
                    paths.emplace_back(
                        std::filesystem::path(take(clang_getFileName(file))).lexically_normal(),
                        clang_Location_isInSystemHeader(begin) != 0);
                }
            },
            &found);
        return std::move(found.second);
    }

    std::vector<CompilerError> errors() const
    {
        // Asking the unit for one diagnostic after the other takes quadratic time.
        std::unique_ptr<void, void (*)(CXDiagnosticSet)> all(clang_getDiagnosticSetFromTU(unit_),
                                                             clang_disposeDiagnosticSet);
        std::vector<CompilerError> errors;
        for (unsigned i = 0; i < clang_getNumDiagnosticsInSet(all.get()); ++i) {
            CXDiagnostic diagnostic = clang_getDiagnosticInSet(all.get(), i);
            if (clang_getDiagnosticSeverity(diagnostic) >= CXDiagnostic_Error) {
                errors.push_back(
                    {position_of(diagnostic), take(clang_getDiagnosticSpelling(diagnostic)), {}});
                CXDiagnosticSet notes = clang_getChildDiagnostics(diagnostic);
                for (unsigned note = 0; note < clang_getNumDiagnosticsInSet(notes); ++note) {
                    errors.back().notes.push_back(position_of(clang_getDiagnosticInSet(notes, note)));
                }
            }
        }
        return errors;
    }

private:
    static Position position_of(CXDiagnostic diagnostic)
    {
        Position position;
        CXFile file;
        clang_getExpansionLocation(clang_getDiagnosticLocation(diagnostic), &file, &position.line,
                                   &position.column, nullptr);
        position.file = file ? take(clang_getFileName(file)) : "";
        return position;
    }

    CXIndex index_;
    CXTranslationUnit unit_;
};

/// What C++ has to be told before it can read headers of C.
struct Preparation {
    std::set<std::string> words;      ///< those of C++ that the headers declare something by
    std::vector<std::string> before;  ///< the system's, which are read while these are words
    std::map<std::string, std::string>
        brought;  ///< headers without a guard that another one includes, and their files

    bool is_needed() const { return !words.empty() || !brought.empty(); }
};

/// The main file: it includes the headers, each in a few lines of its own.
class MainFile {
public:
    explicit MainFile(const HeaderSource &source, const Preparation &preparation = {})
    {
        if (!source.c_headers.empty()) {
            const Entry &first = source.c_headers.front();
            for (const std::string &header : preparation.before) {
                add("#include <" + header + ">\n", first);
            }
            for (const std::string &word : preparation.words) {
                add("#define " + word + " " + name_in_cxx(word) + "\n", first);
            }
            for (const Entry &header : source.c_headers) {
                if (preparation.brought.count(header.text) == 0) {
                    add("extern \"C\" {\n#include <" + header.text + ">\n}\n", header);
                }
            }
            for (const std::string &word : preparation.words) {
                add("#undef " + word + "\n", first);
            }
        }
        c_text_ = text_;
        for (const Entry &header : source.cxx_headers) {
            add("#include \"" + header.text + "\"\n", header);
        }
    }

    const std::string &text() const { return text_; }
    const std::string &c_text() const { return c_text_; }  ///< what of it is about the headers of C
    unsigned line_count() const { return static_cast<unsigned>(entries_.size()); }

    /// The entry that a line includes.
    const Entry &entry_at(unsigned line) const
    {
        return *entries_.at(std::min<std::size_t>(std::max(line, 1u), entries_.size()) - 1);
    }

private:
    void add(const std::string &lines, const Entry &entry)
    {
        text_ += lines;
        entries_.resize(entries_.size() + std::size_t(std::count(lines.begin(), lines.end(), '\n')), &entry);
    }

    std::string text_, c_text_;
    std::vector<const Entry *> entries_;  ///< by line
};

/// Reads the headers as C does, to find what C++ has to be told.
class Preparer {
public:
    static Preparation prepare(const HeaderSource &source)
    {
        Preparation preparation;
        Preparer(source, preparation).find_what_is_brought();
        const Preparer preparer(source, preparation);
        if (preparer.unit_.errors().empty()) {
            preparer.find_words();
        }
        return preparation;
    }

private:
    Preparer(const HeaderSource &source, Preparation &preparation)
        : source_(source),
          unit_(text_of(source, preparation), source, TranslationUnit::Language::C),
          found_(preparation)
    {
    }

    static std::string text_of(const HeaderSource &source, const Preparation &preparation)
    {
        std::string text;
        for (const Entry &header : source.c_headers) {
            if (preparation.brought.count(header.text) == 0) {
                text += "#include <" + header.text + ">\n";
            }
        }
        return text;
    }

    struct Inclusion {
        std::string name, by, file;
        bool of_system, guarded;
    };

    // Visits all that the headers have, however deep.
    template <typename Visit>
    void visit(const Visit &visit) const
    {
        clang_visitChildren(
            clang_getTranslationUnitCursor(unit_.get()),
            [](CXCursor cursor, CXCursor, CXClientData data) {
                (*static_cast<const Visit *>(data))(cursor);
                return CXChildVisit_Recurse;
            },
            const_cast<Visit *>(&visit));
    }

    std::vector<Inclusion> inclusions() const
    {
        std::vector<Inclusion> inclusions;
        visit([&](CXCursor cursor) {
            CXFile file = clang_getCursorKind(cursor) == CXCursor_InclusionDirective
                              ? clang_getIncludedFile(cursor)
                              : nullptr;
            if (file) {
                const CXSourceLocation begin = clang_getLocationForOffset(unit_.get(), file, 0);
                inclusions.push_back({take(clang_getCursorSpelling(cursor)), file_of(cursor),
                                      take(clang_getFileName(file)),
                                      clang_Location_isInSystemHeader(begin) != 0,
                                      clang_isFileMultipleIncludeGuarded(unit_.get(), file) != 0});
            }
        });
        return inclusions;
    }

    static std::string file_of(CXCursor cursor)
    {
        CXFile file;
        clang_getExpansionLocation(clang_getCursorLocation(cursor), &file, nullptr, nullptr, nullptr);
        return file ? take(clang_getFileName(file)) : "";
    }

    void find_what_is_brought() const
    {
        const std::vector<Inclusion> all = inclusions();
        for (const Inclusion &listed : all) {
            const bool is_brought = std::any_of(all.begin(), all.end(), [&](const Inclusion &other) {
                return other.by != main_file && std::filesystem::equivalent(other.file, listed.file);
            });
            if (listed.by == main_file && !listed.guarded && is_brought) {
                found_.brought.emplace(listed.name, listed.file);
            }
        }
    }

    void find_words() const
    {
        std::set<std::string> macros, with_words;
        visit([&](CXCursor cursor) {
            const std::string name = take(clang_getCursorSpelling(cursor));
            if (!is_cxx_word(name)) {
                return;
            }
            if (clang_getCursorKind(cursor) == CXCursor_MacroDefinition) {
                macros.insert(name);
            } else if (clang_isDeclaration(clang_getCursorKind(cursor))) {
                found_.words.insert(name);
                with_words.insert(file_of(cursor));
            }
        });
        // Macros are what they are to C++ too.
        for (const std::string &macro : macros) {
            found_.words.erase(macro);
        }
        if (found_.words.empty()) {
            return;
        }
        // What the system has may be written for C++, in its words.
        const std::vector<Inclusion> all = inclusions();
        auto can_have_words = [&](const Inclusion &inclusion) {
            return inclusion.by == main_file || !inclusion.of_system || with_words.count(inclusion.file) != 0;
        };
        std::set<std::string> users, known;
        for (const Inclusion &inclusion : all) {
            if (can_have_words(inclusion)) {
                users.insert(inclusion.file);
            }
        }
        for (const Inclusion &inclusion : all) {
            if (users.count(inclusion.by) != 0 && users.count(inclusion.file) == 0
                && known.insert(inclusion.file).second
                && TranslationUnit("#include <" + inclusion.name + ">\n", source_).errors().empty()) {
                found_.before.push_back(inclusion.name);
            }
        }
    }

    const HeaderSource &source_;
    TranslationUnit unit_;
    Preparation &found_;
};

// An error in a header has its place there; one that shows behind it, such as a brace that is not closed, has that
// of the entry that names the header.
void add_error(Errors &errors, const CompilerError &error, const MainFile &main)
{
    auto in_header = [](const Position &position) {
        return !position.file.empty() && position.file != main_file;
    };
    Position position = error.position;
    // The last note says what was begun.
    if (!in_header(position) && !error.notes.empty()) {
        position = error.notes.back();
    }
    if (position.file.empty()) {
        errors.add("the compiler", error.text);
    } else if (in_header(position)) {
        errors.add(position.file + ":" + std::to_string(position.line) + ":" + std::to_string(position.column)
                       + ": error",
                   error.text);
    } else {
        const Entry &entry = main.entry_at(position.line);
        errors.add(entry.place, "'" + entry.text + "': " + error.text);
    }
}

void refuse_what_does_not_compile(const TranslationUnit &unit, const MainFile &main,
                                  const HeaderSource &source, const Preparation &preparation)
{
    std::vector<CompilerError> found = unit.errors();
    if (found.empty()) {
        return;
    }
    Errors errors;
    HeaderSource c_source = source;
    c_source.cxx_headers.clear();
    // What C leaves open, all the C++ libraries that are read after it complain about.
    const MainFile c_main(c_source, preparation);
    std::vector<CompilerError> in_c = TranslationUnit(c_main.text(), c_source).errors();
    for (const CompilerError &error : in_c.empty() ? found : in_c) {
        add_error(errors, error, main);
    }
    errors.raise_any();
}

class Reader {
public:
    Reader(const TranslationUnit &unit, const Preparation &preparation)
        : unit_(unit), preparation_(preparation), comments_(unit.get())
    {
    }

    Declarations read()
    {
        const CXCursor everything = clang_getTranslationUnitCursor(unit_.get());
        find_listed_headers(everything);
        visit_children(everything);
        for (const std::string &header : headers_) {
            declarations_.file_comments[header] = comments_.of_file(header);
        }
        name_what_functions_hide();
        return std::move(declarations_);
    }

    /// Object-like macros that can stand in parentheses; what they stand for is not known.
    std::vector<Constant> macros()
    {
        std::vector<Constant> macros;
        for (const Constant &macro : macros_) {
            if (is_balanced(macro.name)) {
                macros.push_back(macro);
            }
        }
        return macros;
    }

    /// Headers in the order in which they were first met.
    const std::vector<std::string> &headers() const { return headers_; }

private:
    using Place = std::pair<CXFile, unsigned>;

    void visit_children(CXCursor cursor)
    {
        clang_visitChildren(
            cursor,
            [](CXCursor child, CXCursor, CXClientData self) {
                static_cast<Reader *>(self)->visit(child);
                return CXChildVisit_Continue;
            },
            this);
    }

    void visit(CXCursor cursor)
    {
        if (clang_getCursorKind(cursor) == CXCursor_MacroDefinition) {
            macro_definitions_[name_of(cursor)] = cursor;
        }
        if (clang_getCursorKind(cursor) == CXCursor_FunctionDecl) {
            function_names_.insert(name_of(cursor));
        }
        if (is_of_system(cursor)) {
            // Of those in there only the names of functions count.
            const CXCursorKind kind = clang_getCursorKind(cursor);
            if (kind == CXCursor_LinkageSpec || kind == CXCursor_UnexposedDecl) {
                visit_children(cursor);
            }
            return;
        }
        switch (clang_getCursorKind(cursor)) {
        case CXCursor_LinkageSpec:
        case CXCursor_UnexposedDecl:
            visit_children(cursor);
            break;
        case CXCursor_FunctionDecl:
            read_function(cursor);
            break;
        case CXCursor_Namespace:
            read_namespace(cursor);
            break;
        case CXCursor_StructDecl:
        case CXCursor_UnionDecl:
            read_record(cursor, name_of(cursor), cxx_name_of(cursor));
            break;
        case CXCursor_EnumDecl:
            read_enumeration(cursor, {});
            break;
        case CXCursor_VarDecl:
            function_names_.insert(name_of(cursor));
            declarations_.variables.push_back(
                {name_of(cursor), header_of(cursor), declared_type(cursor), line_of(cursor), size_of(cursor),
                 name_in_c(take(clang_Cursor_getMangling(cursor))), comments_.of(cursor, rows_.variables)});
            break;
        case CXCursor_TypedefDecl:
            read_typedef(cursor);
            break;
        case CXCursor_MacroDefinition:
            read_macro(cursor);
            break;
        default:
            break;
        }
    }

    static CXFile file_of(CXCursor cursor)
    {
        CXFile file;
        clang_getExpansionLocation(clang_getCursorLocation(cursor), &file, nullptr, nullptr, nullptr);
        return file;
    }

    // The same for a file however its path is spelt: as it was when it was first met.
    std::string name_of_file(CXFile file)
    {
        CXFileUniqueID id;
        if (!file || clang_getFileUniqueID(file, &id) != 0) {
            return file ? take(clang_getFileName(file)) : "";
        }
        auto [known, is_new] =
            file_names_.emplace(std::array<unsigned long long, 2>{id.data[0], id.data[1]}, "");
        if (is_new) {
            known->second = take(clang_getFileName(file));
        }
        return known->second;
    }

    std::string header_of(CXCursor cursor)
    {
        std::string name = name_of_file(file_of(cursor));
        if (std::find(headers_.begin(), headers_.end(), name) == headers_.end()) {
            headers_.push_back(name);
        }
        return name;
    }

    void note_listed(const std::string &name, CXFile file)
    {
        const std::string path = name_of_file(file);
        declarations_.header_files[name] = path;
        listed_.insert(path);
    }

    // What the main file includes is listed, wherever it is found, and so is what that includes in its place.
    void find_listed_headers(CXCursor everything)
    {
        clang_visitChildren(
            everything,
            [](CXCursor child, CXCursor, CXClientData data) {
                if (clang_getCursorKind(child) == CXCursor_InclusionDirective
                    && take(clang_getFileName(file_of(child))) == main_file) {
                    static_cast<Reader *>(data)->note_listed(take(clang_getCursorSpelling(child)),
                                                             clang_getIncludedFile(child));
                }
                return CXChildVisit_Continue;
            },
            this);
        for (const auto &[name, path] : preparation_.brought) {
            note_listed(name, clang_getFile(unit_.get(), path.c_str()));
        }
    }

    // The system's, unless it is listed.
    bool is_of_system(CXCursor cursor)
    {
        return clang_Location_isInSystemHeader(clang_getCursorLocation(cursor))
               && listed_.count(name_of_file(file_of(cursor))) == 0;
    }

    static unsigned line_of(CXCursor cursor)
    {
        unsigned line = 0;
        clang_getExpansionLocation(clang_getCursorLocation(cursor), nullptr, &line, nullptr, nullptr);
        return line;
    }

    static long long size_of(CXCursor declarator)
    {
        return clang_Type_getSizeOf(clang_getCursorType(declarator));
    }

    // Its tag or, without one, the name of its typedef; without both it is empty.
    std::string name_of_enumeration(CXCursor enumeration) const
    {
        if (!name_of(enumeration).empty()) {
            auto part = parts_.find(place_of(enumeration));
            return part == parts_.end() ? qualified_name(enumeration) : part->second;
        }
        std::string name = name_in_c(take(clang_getTypeSpelling(clang_getCursorType(enumeration))));
        return name.find('(') == std::string::npos ? name : "";
    }

    static bool enumerator_fits(CXCursor cursor)
    {
        // Of an unsigned type, what is above the greatest long long is negative here.
        const long long value = clang_getEnumConstantDeclValue(cursor);
        const CXCursor enumeration = clang_getCursorSemanticParent(cursor);
        const CXType type = clang_getCanonicalType(clang_getEnumDeclIntegerType(enumeration));
        const bool is_unsigned = type.kind == CXType_ULong || type.kind == CXType_ULongLong;
        return value >= (is_unsigned ? 0 : INT32_MIN) && value <= UINT32_MAX;
    }

    Constant constant_at(CXCursor cursor, Row &row)
    {
        unsigned line = 0, column = 0;
        clang_getExpansionLocation(clang_getCursorLocation(cursor), nullptr, &line, &column, nullptr);
        return {name_of(cursor),         header_of(cursor),        line, column, {},
                Constant::Kind::Integer, comments_.of(cursor, row)};
    }

    std::vector<std::string> tokens_of(CXSourceRange range)
    {
        CXToken *tokens = nullptr;
        unsigned count = 0;
        clang_tokenize(unit_.get(), range, &tokens, &count);
        std::vector<std::string> texts;
        for (unsigned i = 0; i < count; ++i) {
            if (clang_getTokenKind(tokens[i]) != CXToken_Comment) {
                texts.push_back(take(clang_getTokenSpelling(unit_.get(), tokens[i])));
            }
        }
        clang_disposeTokens(unit_.get(), tokens, count);
        return texts;
    }

    // The array bounds of a declarator, as spelled. They stand behind the name; before it are the bounds of
    // others that are declared together with it.
    std::vector<std::string> extents_of(CXCursor declarator)
    {
        std::vector<std::string> extents;
        int depth = 0;
        CXSourceRange range = clang_getCursorExtent(declarator);
        if (!name_of(declarator).empty()) {
            range = clang_getRange(clang_getCursorLocation(declarator), clang_getRangeEnd(range));
        }
        for (const std::string &token : tokens_of(range)) {
            if (token == "]" && --depth == 0) {
                continue;
            }
            if (depth > 0) {
                extents.back() +=
                    (extents.back().empty() || is_tight(token) || is_tight_after(extents.back()) ? "" : " ")
                    + token;
            }
            if (token == "[" && depth++ == 0) {
                extents.emplace_back();
            }
        }
        return extents;
    }

    static bool is_tight(const std::string &token) { return token == "(" || token == ")" || token == ","; }
    static bool is_tight_after(const std::string &text) { return text.back() == '('; }

    // `extents` are those still to be used, outermost first.
    TypePtr read_type(CXType type, std::vector<std::string> &extents)
    {
        TypePtr result = read_unqualified(type, extents);
        if (clang_isVolatileQualifiedType(type)) {
            result = Type::volatile_of(result);
        }
        return clang_isConstQualifiedType(type) ? Type::constant(result) : result;
    }

    TypePtr read_unqualified(CXType type, std::vector<std::string> &extents)
    {
        switch (type.kind) {
        case CXType_Elaborated:
            return Type::without_const(read_type(clang_Type_getNamedType(type), extents));
        case CXType_Typedef: {
            CXCursor declaration = clang_getTypeDeclaration(type);
            std::string name = qualified_name(declaration);
            return Type::typedef_of(name, typedef_target(declaration, name));
        }
        case CXType_Record:
            if (name_of_declaration(type) == "__va_list_tag") {
                return Type::builtin(variable_arguments);
            }
            note_keyword(name_of_declaration(type), type);
            return Type::record(name_of_declaration(type));
        case CXType_Enum: {
            std::string name = name_of_declaration(type);
            // Nothing else can be declared with it.
            if (name.empty()) {
                return Type::builtin("int");
            }
            note_enumeration(name, type);
            note_keyword(name, type);
            return Type::enumeration(name);
        }
        case CXType_Pointer:
            return Type::pointer_to(read_type(clang_getPointeeType(type), extents));
        case CXType_LValueReference:
            return Type::reference_to(read_type(clang_getPointeeType(type), extents));
        case CXType_ConstantArray:
        case CXType_IncompleteArray: {
            std::string extent;
            if (!extents.empty()) {
                extent = extents.front();
                extents.erase(extents.begin());
            } else if (type.kind == CXType_ConstantArray) {
                extent = std::to_string(clang_getArraySize(type));
            }
            return Type::array_of(read_type(clang_getArrayElementType(type), extents), extent);
        }
        case CXType_FunctionProto:
        case CXType_FunctionNoProto: {
            std::vector<TypePtr> parameters;
            std::vector<std::string> none;
            const int count = clang_getNumArgTypes(type);
            parameters.reserve(static_cast<size_t>(count));
            for (int i = 0; i < count; ++i) {
                parameters.push_back(read_type(clang_getArgType(type, static_cast<unsigned>(i)), none));
            }
            return Type::function(read_type(clang_getResultType(type), none), parameters);
        }
        default: {
            if (type.kind == CXType_Complex) {
                return Type::builtin(
                    "_Complex " + Type::without_const(read_type(clang_getElementType(type), extents))->name);
            }
            std::string name = take(clang_getTypeSpelling(type));
            for (const std::string qualifier : {"const ", "volatile "}) {
                if (name.compare(0, qualifier.size(), qualifier) == 0) {
                    name.erase(0, qualifier.size());
                }
            }
            TypePtr builtin = Type::builtin(name);
            return exact_ && (type.kind == CXType_Long || type.kind == CXType_ULong) ? Type::exact(builtin)
                                                                                     : builtin;
        }
        }
    }

    void note_enumeration(const std::string &name, CXType type)
    {
        declarations_.enumerations.insert(name);
        if (clang_Type_getSizeOf(type) > 4) {
            declarations_.wide_enumerations.insert(name);
        }
    }

    static const char *keyword_of(CXCursor declaration)
    {
        switch (clang_getCursorKind(declaration)) {
        case CXCursor_UnionDecl:
            return "union ";
        case CXCursor_EnumDecl:
            return "enum ";
        default:
            return "struct ";
        }
    }

    void note_keyword(const std::string &name, CXType type)
    {
        keywords_[name] = keyword_of(clang_getTypeDeclaration(type));
    }

    // C keeps tags apart from functions and variables; C++ finds these first.
    void name_what_functions_hide()
    {
        for (const auto &[name, keyword] : keywords_) {
            if (function_names_.count(name) != 0 && declarations_.typedefs.count(name) == 0) {
                declarations_.cxx_names.emplace(name, keyword + name_in_cxx(name));
            }
        }
    }

    // Empty for what has no name, wherever it stands.
    std::string name_of_declaration(CXType type) const
    {
        CXCursor declaration = clang_getTypeDeclaration(type);
        auto part = parts_.find(place_of(declaration));
        if (part != parts_.end()) {
            return part->second;
        }
        return name_of(declaration).empty() ? "" : qualified_name(declaration);
    }

    TypePtr declared_type(CXCursor declarator)
    {
        std::vector<std::string> extents = extents_of(declarator);
        return read_type(clang_getCursorType(declarator), extents);
    }

    TypePtr typedef_target(CXCursor declaration, const std::string &name)
    {
        auto found = declarations_.typedefs.find(name);
        if (found != declarations_.typedefs.end()) {
            return found->second;
        }
        if (name == "__builtin_va_list") {
            return declarations_.typedefs[name] = Type::builtin(variable_arguments);
        }
        std::vector<std::string> extents = extents_of(declaration);
        CXType underlying = clang_getTypedefDeclUnderlyingType(declaration);
        const bool is_exact = std::exchange(exact_, exact_ || is_of_system(declaration));
        TypePtr target = read_type(underlying, extents);
        exact_ = is_exact;
        // A record or enumeration without a tag goes by its typedef's name.
        if (target->kind == Type::Kind::Record && target->name.empty()) {
            target = Type::record(name);
        }
        CXType canonical = clang_getCanonicalType(underlying);
        if (target->kind == Type::Kind::Builtin && canonical.kind == CXType_Enum) {
            note_enumeration(name, canonical);
            target = Type::enumeration(name);
        }
        return declarations_.typedefs[name] = target;
    }

    void read_typedef(CXCursor cursor)
    {
        std::string name = name_of(cursor);
        TypePtr target = typedef_target(cursor, name);
        if (target->kind == Type::Kind::Enum) {
            name_enumeration(target->name, name);
        } else if (target->kind != Type::Kind::Record && is_new(cursor)) {
            declarations_.named_types.push_back({name, header_of(cursor), target, line_of(cursor),
                                                 parameters_of_typedef(cursor),
                                                 comments_.of(cursor, rows_.typedefs)});
        }
        if (target->kind != Type::Kind::Record) {
            return;
        }
        // The typedef that comes with or after a record names it in Python; one that came before it does not.
        for (Record &record : declarations_.records) {
            const bool names_it = record.tag.empty() && target->name == name;
            if ((record.tag == target->name || names_it) && !record.has_typedef) {
                record.tag = target->name;
                record.name = name;
                record.has_typedef = true;
            }
        }
    }

    // `scope` is what C++ takes its enumerators for parts of.
    void read_enumeration(CXCursor cursor, const std::string &scope)
    {
        Row alone;
        std::string name = name_of_enumeration(cursor);
        if (!name.empty()) {
            declarations_.named_types.push_back({name,
                                                 header_of(cursor),
                                                 Type::enumeration(name),
                                                 line_of(cursor),
                                                 {},
                                                 comments_.of(cursor, alone)});
        }
        rows_.enumerators = Row();
        read_enumerators(cursor, scope);
    }

    // The first typedef of an enumeration is its name.
    void name_enumeration(const std::string &tag, const std::string &name)
    {
        for (NamedType &type : declarations_.named_types) {
            if (type.type->kind == Type::Kind::Enum && type.type->name == tag && type.name == tag) {
                type.name = name;
            }
        }
    }

    std::vector<Parameter> parameters_of_typedef(CXCursor cursor)
    {
        std::pair<Reader *, std::vector<Parameter>> found(this, {});
        clang_visitChildren(
            cursor,
            [](CXCursor child, CXCursor, CXClientData data) {
                auto &[reader, parameters] =
                    *static_cast<std::pair<Reader *, std::vector<Parameter>> *>(data);
                if (clang_getCursorKind(child) == CXCursor_ParmDecl) {
                    parameters.push_back(reader->parameter_at(child, parameters.size()));
                }
                return CXChildVisit_Continue;
            },
            &found);
        return std::move(found.second);
    }

    Parameter parameter_at(CXCursor cursor, size_t place)
    {
        std::string name = name_of(cursor);
        return {name.empty() ? "arg" + std::to_string(place + 1) : name, declared_type(cursor)};
    }

    // What C++ calls a record outside of others; empty for one that it has no name for.
    static std::string cxx_name_of(CXCursor record)
    {
        std::string name = take(clang_getTypeSpelling(clang_getCursorType(record)));
        return name.find('(') == std::string::npos ? name : "";
    }

    // `name` is C's, `cxx_name` what its parts are named by.
    void read_record(CXCursor cursor, const std::string &name, const std::string &cxx_name)
    {
        if (!clang_isCursorDefinition(cursor)) {
            return;
        }
        Record record;
        record.tag = record.name = name;
        record.header = header_of(cursor);
        record.is_union = clang_getCursorKind(cursor) == CXCursor_UnionDecl;
        record.line = line_of(cursor);
        Row alone;
        record.comment = comments_.of(cursor, alone);
        const Row outer = std::exchange(rows_.members, Row());
        record.cxx_name = cxx_name == name_in_cxx(name) ? "" : cxx_name;
        read_members(cursor, {record, name.empty() ? cxx_name : name, cxx_name});
        rows_.members = outer;
        declarations_.records.push_back(std::move(record));
    }

    // A record whose members are being read, and what it is called in C and C++.
    struct OpenRecord {
        Record &record;
        std::string name, cxx_name;
    };

    void read_members(CXCursor cursor, const OpenRecord &open)
    {
        std::pair<Reader *, const OpenRecord *> context(this, &open);
        clang_visitChildren(
            cursor,
            [](CXCursor child, CXCursor, CXClientData data) {
                auto [reader, parent] = *static_cast<std::pair<Reader *, const OpenRecord *> *>(data);
                reader->read_part(child, *parent);
                return CXChildVisit_Continue;
            },
            &context);
    }

    void read_part(CXCursor child, const OpenRecord &open)
    {
        const std::string name = name_of(child);
        switch (clang_getCursorKind(child)) {
        case CXCursor_FieldDecl:
            // Bit-fields without a name only fill up.
            if (!name.empty()) {
                read_unnamed_type(child, open.name + "_" + name, open.cxx_name + "::" + name_in_cxx(name));
                open.record.members.push_back({name, declared_type(child), line_of(child), size_of(child),
                                               std::max(clang_getFieldDeclBitWidth(child), 0),
                                               is_signed(clang_getCursorType(child)),
                                               comments_.of(child, rows_.members)});
            }
            break;
        case CXCursor_EnumDecl:
            // To C they stand beside the record.
            if (!name.empty()) {
                add_part(child, name);
            }
            read_enumeration(child, open.cxx_name + "::");
            break;
        case CXCursor_StructDecl:
        case CXCursor_UnionDecl:
            if (clang_Cursor_isAnonymousRecordDecl(child)) {
                read_members(child, open);
            } else if (!name.empty() && is_part(child)) {
                add_part(child, name);
                read_record(child, name, open.cxx_name + "::" + name_in_cxx(name));
            }
            break;
        default:
            break;
        }
    }

    static bool is_signed(CXType type)
    {
        type = clang_getCanonicalType(type);
        if (type.kind == CXType_Enum) {
            type = clang_getEnumDeclIntegerType(clang_getTypeDeclaration(type));
        }
        return type.kind >= CXType_Char_S && type.kind <= CXType_Int128;
    }

    // The record without a name that a member has, or points to, or has an array of, goes by the member's name.
    void read_unnamed_type(CXCursor member, const std::string &name, const std::string &cxx_member)
    {
        CXType type = clang_getCursorType(member);
        std::string cxx = "decltype(" + cxx_member + ")";
        for (;;) {
            if (type.kind == CXType_Pointer) {
                type = clang_getPointeeType(type);
                cxx = "std::remove_pointer_t<" + cxx + ">";
            } else if (type.kind == CXType_ConstantArray || type.kind == CXType_IncompleteArray) {
                type = clang_getArrayElementType(type);
                cxx = "std::remove_extent_t<" + cxx + ">";
            } else {
                break;
            }
        }
        if (type.kind == CXType_Elaborated) {
            type = clang_Type_getNamedType(type);
        }
        const CXCursor declaration = clang_getTypeDeclaration(type);
        if (type.kind == CXType_Record && name_of(declaration).empty()
            && parts_.count(place_of(declaration)) == 0) {
            add_part(declaration, name);
            read_record(declaration, name, cxx);
        }
    }

    // A tag that is only mentioned within a record is declared outside of it.
    static bool is_part(CXCursor declaration)
    {
        const CXCursorKind parent = clang_getCursorKind(clang_getCursorSemanticParent(declaration));
        return parent == CXCursor_StructDecl || parent == CXCursor_UnionDecl;
    }

    // What C++ takes for a part of a record, and C does not.
    void add_part(CXCursor declaration, const std::string &name)
    {
        parts_.emplace(place_of(declaration), name);
        declarations_.cxx_names.emplace(name, keyword_of(declaration) + name_in_cxx(name));
    }

    static Place place_of(CXCursor cursor)
    {
        CXFile file;
        unsigned offset = 0;
        clang_getExpansionLocation(clang_getCursorLocation(cursor), &file, nullptr, nullptr, &offset);
        return {file, offset};
    }

    void read_enumerators(CXCursor enumeration, const std::string &scope)
    {
        std::pair<Reader *, const std::string *> context(this, &scope);
        clang_visitChildren(
            enumeration,
            [](CXCursor child, CXCursor, CXClientData data) {
                auto [reader, of] = *static_cast<std::pair<Reader *, const std::string *> *>(data);
                if (clang_getCursorKind(child) == CXCursor_EnumConstantDecl) {
                    reader->read_enumerator(child, *of);
                }
                return CXChildVisit_Continue;
            },
            &context);
    }

    void read_enumerator(CXCursor cursor, const std::string &scope)
    {
        Constant constant = constant_at(cursor, rows_.enumerators);
        constant.enumeration = name_of_enumeration(clang_getCursorSemanticParent(cursor));
        constant.value = clang_getEnumConstantDeclValue(cursor);
        constant.kind = enumerator_fits(cursor) ? Constant::Kind::Integer : Constant::Kind::Wide;
        constant.scope = scope;
        declarations_.constants.push_back(std::move(constant));
    }

    // Of what stands in a namespace, only functions can be bound.
    void read_namespace(CXCursor cursor)
    {
        clang_visitChildren(
            cursor,
            [](CXCursor child, CXCursor, CXClientData self) {
                if (clang_getCursorKind(child) == CXCursor_FunctionDecl) {
                    static_cast<Reader *>(self)->read_function(child);
                } else if (clang_getCursorKind(child) == CXCursor_Namespace) {
                    static_cast<Reader *>(self)->read_namespace(child);
                }
                return CXChildVisit_Continue;
            },
            this);
    }

    bool is_new(CXCursor cursor) { return known_.insert(take(clang_getCursorUSR(cursor))).second; }

    void read_function(CXCursor cursor)
    {
        Function function;
        function.name = name_of(cursor);
        // Declared again is the same function; overloaded is another.
        if (!is_new(cursor)) {
            return;
        }
        std::string qualified = qualified_name(cursor);
        function.scope = qualified.substr(0, qualified.size() - function.name.size());
        function.header = header_of(cursor);
        function.line = line_of(cursor);
        function.symbol = name_in_c(take(clang_Cursor_getMangling(cursor)));
        function.is_variadic = clang_isFunctionTypeVariadic(clang_getCursorType(cursor)) != 0;
        function.is_inline =
            clang_Cursor_isFunctionInlined(cursor) || clang_Cursor_getStorageClass(cursor) == CX_SC_Static;
        std::vector<std::string> none;
        function.result = read_type(clang_getCursorResultType(cursor), none);
        for (int i = 0; i < clang_Cursor_getNumArguments(cursor); ++i) {
            CXCursor parameter = clang_Cursor_getArgument(cursor, static_cast<unsigned>(i));
            function.parameters.push_back(parameter_at(parameter, function.parameters.size()));
        }
        function.comment = comments_.of(cursor, rows_.functions);
        declarations_.functions.push_back(std::move(function));
    }

    void read_macro(CXCursor cursor)
    {
        if (clang_Cursor_isMacroFunctionLike(cursor) || clang_Cursor_isMacroBuiltin(cursor)
            || take(clang_getFileName(file_of(cursor))) == main_file) {
            return;
        }
        // By these a program tells the C library's headers what it wants, and each compiler has them otherwise.
        if (name_of(cursor).compare(0, 6, "__STDC") == 0) {
            return;
        }
        std::string header = header_of(cursor);
        if (header.empty() || tokens_of(clang_getCursorExtent(cursor)).size() < 2) {
            return;
        }
        macros_.push_back(constant_at(cursor, rows_.macros));
        macros_.back().is_macro = true;
    }

    // Whether what a macro stands for has no braces and closes what it opens. All else (`extern "C" {`,
    // `} while (0)`) would take the macros that are asked for after it with it.
    bool is_balanced(const std::string &name)
    {
        auto definition = macro_definitions_.find(name);
        // Within itself a macro is a plain word, which the first answer stands for.
        auto [known, is_new] = balanced_.emplace(name, true);
        if (definition == macro_definitions_.end() || !is_new) {
            return known->second;
        }
        int depth = 0;
        bool balanced = true;
        for (const std::string &token : tokens_of(clang_getCursorExtent(definition->second))) {
            depth += (token == "(" || token == "[") - (token == ")" || token == "]");
            balanced = balanced && depth >= 0 && token != "{" && token != "}" && is_balanced(token);
        }
        return known->second = balanced && depth == 0;
    }

    const TranslationUnit &unit_;
    const Preparation &preparation_;
    Declarations declarations_;
    std::vector<Constant> macros_;
    std::map<std::string, CXCursor> macro_definitions_;  ///< of system headers and with parameters too
    std::map<std::string, bool> balanced_;               ///< by macro, as far as asked for
    std::vector<std::string> headers_;
    std::set<std::string> known_;  ///< what is_new() was asked of
    Comments comments_;
    struct {
        Row functions, variables, typedefs, macros, members, enumerators;
    } rows_;  ///< where each sort of declarations has come to
    std::map<std::array<unsigned long long, 2>, std::string> file_names_;  ///< by device and number
    std::set<std::string> listed_;                                         ///< names of files
    std::set<std::string> function_names_;         ///< of all functions and variables, the system's too
    std::map<std::string, std::string> keywords_;  ///< of records and enumerations
    std::map<Place, std::string> parts_;           ///< C's names of what is declared within records
    bool exact_ = false;                           ///< whether a typedef of the system's is being read
};

// What macros stand for is asked of the compiler, a line for each question about each: for those that draw an error
// the answer is no. `questions` have @ for the macro. Gives the answers by macro.
std::vector<std::vector<bool>> ask_of_macros(const HeaderSource &source, const MainFile &main,
                                             const std::vector<Constant> &macros,
                                             const std::vector<std::string> &questions)
{
    std::string text = main.text();
    unsigned line = main.line_count() + 1;
    for (const Constant &macro : macros) {
        for (std::string question : questions) {
            for (size_t at; (at = question.find('@')) != std::string::npos;) {
                question.replace(at, 1, "(" + macro.name + ")");
            }
            text += "static_assert(" + question + ", \"\");\n";
        }
    }
    std::set<unsigned> refused;
    for (const CompilerError &error : TranslationUnit(text, source).errors()) {
        if (error.position.file == main_file) {
            refused.insert(error.position.line);
        }
    }
    std::vector<std::vector<bool>> answers(macros.size());
    for (std::vector<bool> &of_macro : answers) {
        for (size_t i = 0; i < questions.size(); ++i) {
            of_macro.push_back(refused.count(line++) == 0);
        }
    }
    return answers;
}

// Those that are numbers or texts, with their kinds.
std::vector<Constant> constant_macros(const HeaderSource &source, const MainFile &main,
                                      const std::vector<Constant> &macros)
{
    std::vector<Constant> constants, others;
    const auto integers = ask_of_macros(source, main, macros,
                                        {"__is_integral(decltype(@ + 0)) && (@ == @ || true)",
                                         "@ < 0 ? (long long)@ >= -0x80000000LL : (unsigned long long)@ <= "
                                         "0xffffffffULL"});
    for (size_t i = 0; i < macros.size(); ++i) {
        if (integers[i][0]) {
            constants.push_back(macros[i]);
            constants.back().kind = integers[i][1] ? Constant::Kind::Integer : Constant::Kind::Wide;
        } else {
            others.push_back(macros[i]);
        }
    }
    const auto more = ask_of_macros(source, main, others,
                                    {"__is_floating_point(decltype(@ + 0)) && (@ == @ || true)",
                                     "__is_same(decltype(@), const char (&)[sizeof @]) && @[0] == @[0]"});
    for (size_t i = 0; i < others.size(); ++i) {
        if (more[i][0] || more[i][1]) {
            constants.push_back(others[i]);
            constants.back().kind = more[i][0] ? Constant::Kind::Real : Constant::Kind::Text;
        }
    }
    return constants;
}

// libclang gives all macros before all enumerators; readers of a header expect them as they stand in it. A macro
// that is defined anew, or like an enumerator, is the same constant.
std::vector<Constant> in_header_order(std::vector<Constant> constants,
                                      const std::vector<std::string> &headers)
{
    auto place = [&](const Constant &constant) {
        auto header = std::find(headers.begin(), headers.end(), constant.header) - headers.begin();
        return std::make_tuple(header, constant.line, constant.column);
    };
    std::sort(constants.begin(), constants.end(),
              [&](const Constant &a, const Constant &b) { return place(a) < place(b); });
    std::set<std::string> known;
    constants.erase(
        std::remove_if(constants.begin(), constants.end(),
                       [&](const Constant &constant) { return !known.insert(constant.name).second; }),
        constants.end());
    return constants;
}

// The header by which generated C++ gets at the headers of C where it cannot include them as they are, and as often as it
// likes; else nothing.
std::string common_header(const Declarations &declarations, const MainFile &main, const TranslationUnit &unit,
                          const HeaderSource &source, const Preparation &preparation)
{
    const bool are_guarded =
        std::all_of(source.c_headers.begin(), source.c_headers.end(), [&](const Entry &header) {
            CXFile file = clang_getFile(unit.get(), declarations.header_files.at(header.text).c_str());
            return clang_isFileMultipleIncludeGuarded(unit.get(), file) != 0;
        });
    if (are_guarded && !preparation.is_needed()) {
        return "";
    }
    std::string text = "#pragma once\n" + main.c_text();
    auto link = [&](const std::string &name, const std::string &symbol) {
        if (is_cxx_word(name) && symbol == name) {
            text += "extern \"C\" decltype(" + name_in_cxx(name) + ") " + name_in_cxx(name) + " __asm__(\""
                    + name + "\");\n";
        }
    };
    for (const Function &function : declarations.functions) {
        if (!function.is_inline) {
            link(function.name, function.symbol);
        }
    }
    for (const Variable &variable : declarations.variables) {
        link(variable.name, variable.symbol);
    }
    return text;
}

}  // namespace

Declarations read_headers(const HeaderSource &source)
{
    auto main = std::make_unique<MainFile>(source);
    auto unit = std::make_unique<TranslationUnit>(main->text(), source);
    Preparation preparation;
    if (!unit->errors().empty()) {
        preparation = Preparer::prepare(source);
    }
    if (preparation.is_needed()) {
        main = std::make_unique<MainFile>(source, preparation);
        unit = std::make_unique<TranslationUnit>(main->text(), source);
    }
    refuse_what_does_not_compile(*unit, *main, source, preparation);
    Reader reader(*unit, preparation);
    Declarations declarations = reader.read();
    for (const Constant &macro : constant_macros(source, *main, reader.macros())) {
        declarations.constants.push_back(macro);
    }
    declarations.files = unit->files();
    declarations.long_size = unit->long_size();
    declarations.constants = in_header_order(std::move(declarations.constants), reader.headers());
    declarations.common_header = common_header(declarations, *main, *unit, source, preparation);
    return declarations;
}

std::vector<std::string> headers_below(const std::string &header, const HeaderSource &source)
{
    const auto read = TranslationUnit("#include <" + header + ">\n", source).inclusions();
    const std::filesystem::path name = std::filesystem::path(header).lexically_normal();
    std::vector<std::string> below;
    if (read.empty()) {
        return below;
    }
    // A folder of the system's that has the library's name is the library's own.
    const bool is_beside_others = read.front().second && !name.has_parent_path();
    const std::filesystem::path own = read.front().first.parent_path();
    for (const auto &[path, is_of_system] : read) {
        const std::filesystem::path from_own = path.lexically_relative(own);
        if (path != read.front().first && !from_own.empty() && *from_own.begin() != ".."
            && (!is_beside_others || *from_own.begin() == name.stem())) {
            below.push_back((name.parent_path() / from_own).string());
        }
    }
    return below;
}

}  // namespace generator
