#include "header_reader.h"

#include "comments.h"
#include "errors.h"

#include <clang-c/Index.h>

#include <algorithm>
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

/// With the namespaces and classes that it stands in: "MdioHamImpl::HamImpl::Ptr".
std::string qualified_name(CXCursor declaration)
{
    std::string name = take(clang_getCursorSpelling(declaration));
    for (CXCursor scope = clang_getCursorSemanticParent(declaration);
         clang_getCursorKind(scope) == CXCursor_Namespace || clang_getCursorKind(scope) == CXCursor_ClassDecl
         || clang_getCursorKind(scope) == CXCursor_StructDecl;
         scope = clang_getCursorSemanticParent(scope)) {
        name = take(clang_getCursorSpelling(scope)) + "::" + name;
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
    TranslationUnit(const std::string &text, const HeaderSource &source)
    {
        // Each error counts: it says what a macro is not.
        std::vector<std::string> options = {"-x", "c++", "-std=c++17", "-ferror-limit=0"};
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

/// The main file: it includes the headers, each in a few lines of its own.
class MainFile {
public:
    explicit MainFile(const HeaderSource &source)
    {
        for (const Entry &header : source.c_headers) {
            add("extern \"C\" {\n#include <" + header.text + ">\n}\n", header);
        }
        for (const Entry &header : source.cxx_headers) {
            add("#include \"" + header.text + "\"\n", header);
        }
    }

    const std::string &text() const { return text_; }
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

    std::string text_;
    std::vector<const Entry *> entries_;  ///< by line
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
                                  const HeaderSource &source)
{
    std::vector<CompilerError> found = unit.errors();
    if (found.empty()) {
        return;
    }
    Errors errors;
    HeaderSource c_source = source;
    c_source.cxx_headers.clear();
    // What C leaves open, all the C++ libraries that are read after it complain about.
    const MainFile c_main(c_source);
    std::vector<CompilerError> in_c = TranslationUnit(c_main.text(), c_source).errors();
    for (const CompilerError &error : in_c.empty() ? found : in_c) {
        add_error(errors, error, main);
    }
    errors.raise_any();
}

class Reader {
public:
    explicit Reader(const TranslationUnit &unit) : unit_(unit), comments_(unit.get()) {}

    Declarations read()
    {
        visit_children(clang_getTranslationUnitCursor(unit_.get()));
        for (const std::string &header : headers_) {
            declarations_.file_comments[header] = comments_.of_file(header);
        }
        return std::move(declarations_);
    }

    /// Object-like macros that can stand in parentheses; which of them are integers is not known.
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
            macro_definitions_[take(clang_getCursorSpelling(cursor))] = cursor;
        }
        if (clang_Location_isInSystemHeader(clang_getCursorLocation(cursor))) {
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
            read_record(cursor);
            break;
        case CXCursor_EnumDecl:
            read_enumeration(cursor);
            break;
        case CXCursor_EnumConstantDecl:
            declarations_.constants.push_back(constant_at(cursor, rows_.enumerators));
            declarations_.constants.back().enumeration =
                name_of_enumeration(clang_getCursorSemanticParent(cursor));
            declarations_.constants.back().fits_32_bits = enumerator_fits(cursor);
            declarations_.constants.back().value = clang_getEnumConstantDeclValue(cursor);
            break;
        case CXCursor_VarDecl:
            declarations_.variables.push_back({take(clang_getCursorSpelling(cursor)), header_of(cursor),
                                               declared_type(cursor), line_of(cursor), size_of(cursor),
                                               comments_.of(cursor, rows_.variables)});
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

    std::string header_of(CXCursor cursor)
    {
        CXFile file;
        clang_getExpansionLocation(clang_getCursorLocation(cursor), &file, nullptr, nullptr, nullptr);
        std::string name = file ? take(clang_getFileName(file)) : "";
        if (std::find(headers_.begin(), headers_.end(), name) == headers_.end()) {
            headers_.push_back(name);
        }
        return name;
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
    static std::string name_of_enumeration(CXCursor enumeration)
    {
        if (!take(clang_getCursorSpelling(enumeration)).empty()) {
            return qualified_name(enumeration);
        }
        std::string name = take(clang_getTypeSpelling(clang_getCursorType(enumeration)));
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
        return {take(clang_getCursorSpelling(cursor)),
                header_of(cursor),
                line,
                column,
                {},
                true,
                comments_.of(cursor, row)};
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
        if (!take(clang_getCursorSpelling(declarator)).empty()) {
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
            return Type::record(name_of_declaration(type));
        case CXType_Enum: {
            std::string name = name_of_declaration(type);
            // Nothing else can be declared with it.
            if (name.empty()) {
                return Type::builtin("int");
            }
            declarations_.enumerations.insert(name);
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
            std::string name = take(clang_getTypeSpelling(type));
            if (name.compare(0, 6, "const ") == 0) {
                name.erase(0, 6);
            }
            return Type::builtin(name);
        }
        }
    }

    // Empty for what has no name, wherever it stands.
    static std::string name_of_declaration(CXType type)
    {
        CXCursor declaration = clang_getTypeDeclaration(type);
        return take(clang_getCursorSpelling(declaration)).empty() ? "" : qualified_name(declaration);
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
        std::vector<std::string> extents = extents_of(declaration);
        CXType underlying = clang_getTypedefDeclUnderlyingType(declaration);
        TypePtr target = read_type(underlying, extents);
        // A record or enumeration without a tag goes by its typedef's name.
        if (target->kind == Type::Kind::Record && target->name.empty()) {
            target = Type::record(name);
        }
        CXType canonical = clang_getCanonicalType(underlying);
        if (target->kind == Type::Kind::Builtin && canonical.kind == CXType_Enum) {
            declarations_.enumerations.insert(name);
            target = Type::enumeration(name);
        }
        return declarations_.typedefs[name] = target;
    }

    void read_typedef(CXCursor cursor)
    {
        std::string name = take(clang_getCursorSpelling(cursor));
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

    void read_enumeration(CXCursor cursor)
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
        visit_children(cursor);
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
        std::string name = take(clang_getCursorSpelling(cursor));
        return {name.empty() ? "arg" + std::to_string(place + 1) : name, declared_type(cursor)};
    }

    void read_record(CXCursor cursor)
    {
        if (!clang_isCursorDefinition(cursor)) {
            return;
        }
        Record record;
        record.tag = record.name = take(clang_getCursorSpelling(cursor));
        record.header = header_of(cursor);
        record.is_union = clang_getCursorKind(cursor) == CXCursor_UnionDecl;
        record.line = line_of(cursor);
        Row alone;
        record.comment = comments_.of(cursor, alone);
        rows_.members = Row();
        read_members(cursor, record);
        declarations_.records.push_back(std::move(record));
    }

    void read_members(CXCursor cursor, Record &record)
    {
        std::pair<Reader *, Record *> context(this, &record);
        clang_visitChildren(
            cursor,
            [](CXCursor child, CXCursor, CXClientData data) {
                auto [reader, parent] = *static_cast<std::pair<Reader *, Record *> *>(data);
                std::string name = take(clang_getCursorSpelling(child));
                // Bit-fields without a name only fill up.
                if (clang_getCursorKind(child) == CXCursor_FieldDecl && !name.empty()) {
                    parent->members.push_back({name, reader->declared_type(child), line_of(child),
                                               size_of(child), clang_Cursor_isBitField(child) != 0,
                                               reader->comments_.of(child, reader->rows_.members)});
                } else if (clang_Cursor_isAnonymousRecordDecl(child)) {
                    reader->read_members(child, *parent);
                }
                return CXChildVisit_Continue;
            },
            &context);
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
        function.name = take(clang_getCursorSpelling(cursor));
        // Declared again is the same function; overloaded is another.
        if (!is_new(cursor)) {
            return;
        }
        std::string qualified = qualified_name(cursor);
        function.scope = qualified.substr(0, qualified.size() - function.name.size());
        function.header = header_of(cursor);
        function.line = line_of(cursor);
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
        if (clang_Cursor_isMacroFunctionLike(cursor) || clang_Cursor_isMacroBuiltin(cursor)) {
            return;
        }
        std::string header = header_of(cursor);
        if (header.empty() || tokens_of(clang_getCursorExtent(cursor)).size() < 2) {
            return;
        }
        macros_.push_back(constant_at(cursor, rows_.macros));
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
};

// Which macros are integer constants, and which of these fit 32 bits, is asked of the compiler: two lines each,
// and for those that draw an error the answer is no.
std::vector<Constant> integer_macros(const HeaderSource &source, const std::vector<Constant> &macros)
{
    const MainFile main(source);
    std::string text = main.text();
    unsigned first = main.line_count() + 1;
    for (const Constant &macro : macros) {
        const std::string value = "(" + macro.name + ")";
        text += "static_assert(__is_integral(decltype(" + value + " + 0)) && (" + value + " == " + value
                + " || true), \"\");\nstatic_assert(" + value + " < 0 ? (long long)" + value
                + " >= -0x80000000LL : (unsigned long long)" + value + " <= 0xffffffffULL, \"\");\n";
    }
    std::set<unsigned> refused;
    for (const CompilerError &error : TranslationUnit(text, source).errors()) {
        if (error.position.file == main_file) {
            refused.insert(error.position.line);
        }
    }
    std::vector<Constant> integers;
    for (const Constant &macro : macros) {
        if (!refused.count(first)) {
            integers.push_back(macro);
            integers.back().fits_32_bits = !refused.count(first + 1);
        }
        first += 2;
    }
    return integers;
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

}  // namespace

Declarations read_headers(const HeaderSource &source)
{
    const MainFile main(source);
    TranslationUnit unit(main.text(), source);
    refuse_what_does_not_compile(unit, main, source);
    Reader reader(unit);
    Declarations declarations = reader.read();
    for (const Constant &macro : integer_macros(source, reader.macros())) {
        declarations.constants.push_back(macro);
    }
    declarations.files = unit.files();
    declarations.constants = in_header_order(std::move(declarations.constants), reader.headers());
    return declarations;
}

}  // namespace generator
