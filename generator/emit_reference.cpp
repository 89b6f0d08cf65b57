#include "emit.h"
#include "signature.h"
#include "spelling.h"
#include "words.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace generator {

namespace {

std::string escaped(const std::string &text)
{
    std::string line;
    for (char c : text) {
        line += c == '\\' ? "\\\\" : c == '\n' ? "\\n" : c == '\t' ? " " : std::string(1, c);
    }
    return line;
}

std::string row(const std::vector<std::string> &texts)
{
    return fmt::format("{}\n", fmt::join(texts, "\t"));
}

std::string declaration_of(const TypePtr &type, const std::string &name,
                           const std::vector<Parameter> &parameters)
{
    std::vector<std::string> texts;
    texts.reserve(parameters.size());
    for (const Parameter &parameter : parameters) {
        texts.push_back(declare(parameter.type, parameter.name));
    }
    return declare(type, fmt::format("{}({})", name, fmt::join(texts, ", ")));
}

/// What a header says of one declaration, and where.
struct Saying {
    std::string header;  ///< its path
    unsigned line = 0, column = 0;
    Comment comment;
    std::string text;  ///< the rows of the reference, without what stands above the declaration
    bool is_inner = false;
};

/// The first of each name.
template <typename Declared>
class ByName {
public:
    explicit ByName(const std::vector<Declared> &declarations)
    {
        for (const Declared &declared : declarations) {
            declarations_.emplace(declared.name, &declared);
        }
    }

    const Declared *find(const std::string &name) const
    {
        auto found = declarations_.find(name);
        return found == declarations_.end() ? nullptr : found->second;
    }

private:
    std::map<std::string, const Declared *> declarations_;
};

class ReferenceWriter {
public:
    ReferenceWriter(const Model &model, const Declarations &declarations)
        : model_(model),
          declarations_(declarations),
          functions_(declarations.functions),
          records_(declarations.records),
          variables_(declarations.variables)
    {
        for (const Family &family : model.families) {
            for (const auto *headers : {&family.headers, &family.cxx_headers}) {
                headers_.insert(headers->begin(), headers->end());
            }
            for (const BoundRecord &record : family.records) {
                makers_[record.self.descriptor].push_back(record.name);
            }
            for (const BoundPointerClass &bound : family.pointer_classes) {
                makers_[bound.self.descriptor].push_back(bound.name);
                makers_[bound.pointer.descriptor].push_back(bound.name);
            }
            for (const BoundArray &array : family.arrays) {
                makers_[array.pointer.descriptor].push_back(array.name);
            }
        }
        for (const Family &family : model.families) {
            add(family);
        }
        add_constants();
        add_types();
        add_variables();
    }

    std::string text()
    {
        std::map<std::string, std::string> names;  // wherever the headers lie
        for (const Saying &saying : sayings_) {
            names.emplace(saying.header, short_name(saying.header));
        }
        auto place = [&](const Saying &saying) {
            return std::tie(names.at(saying.header), saying.header, saying.line, saying.column);
        };
        std::stable_sort(sayings_.begin(), sayings_.end(),
                         [&](const Saying &a, const Saying &b) { return place(a) < place(b); });
        std::string text = classes_, header;
        std::pair<unsigned, std::string> group;
        for (const Saying &saying : sayings_) {
            if (saying.header != header) {
                header = saying.header;
                group = {};
                text += row({"", "header", names.at(header), escaped(comment_of_file(header))})
                        + row({"", "group", ""});
            }
            // Enumerators are told of beside what their enumeration says.
            auto &current = saying.is_inner ? part_ : group;
            if (!saying.is_inner) {
                part_ = {};
            }
            const std::pair<unsigned, std::string> own = {saying.comment.line, saying.comment.above};
            if (current != own) {
                current = own;
                text += row({"", saying.is_inner ? "part" : "group", escaped(own.second)});
            }
            text += saying.text;
        }
        return text;
    }

private:
    // As `#include` has it; empty for a header that no family names.
    std::string short_name(const std::string &path) const
    {
        for (size_t slash = path.rfind('/'); slash != std::string::npos; slash = path.rfind('/', slash - 1)) {
            if (headers_.count(path.substr(slash + 1)) != 0) {
                return path.substr(slash + 1);
            }
            if (slash == 0) {
                break;
            }
        }
        return "";
    }

    std::string comment_of_file(const std::string &path) const
    {
        auto found = declarations_.file_comments.find(path);
        return found == declarations_.file_comments.end() ? "" : found->second;
    }

    std::string makers_of(const Crossing &crossing) const
    {
        std::set<std::string> names;
        for (const std::string &descriptor : {crossing.descriptor, twin_of(crossing.descriptor)}) {
            auto found = makers_.find(descriptor);
            if (!descriptor.empty() && found != makers_.end()) {
                names.insert(found->second.begin(), found->second.end());
            }
        }
        return fmt::format("{}", fmt::join(names, " "));
    }

    std::string twin_of(const std::string &descriptor) const
    {
        auto found = model_.descriptors.find(descriptor);
        return found == model_.descriptors.end() ? "" : found->second.cast_from;
    }

    void add(const Family &family)
    {
        for (const BoundFunction &function : family.functions) {
            const Function *declared = functions_.find(function.name);
            if (declared) {
                sayings_.push_back({declared->header, declared->line, 0, declared->comment,
                                    row_of(family, function, *declared)});
            }
        }
        for (const BoundRecord &record : family.records) {
            const Record *declared = records_.find(record.name);
            if (declared) {
                sayings_.push_back({declared->header, declared->line, 0, declared->comment,
                                    rows_of(family, record, *declared)});
            }
        }
        for (const BoundPointerClass &bound : family.pointer_classes) {
            classes_ += row({bound.name, "pointer_class", "", bound.element.text});
        }
        for (const BoundArray &array : family.arrays) {
            classes_ += row({array.name, "array", "", array.element.text});
        }
    }

    std::string row_of(const Family &family, const BoundFunction &function, const Function &declared) const
    {
        std::vector<std::string> texts = {function.name,
                                          "function",
                                          escaped(declared.comment.beside),
                                          family.name,
                                          declaration_of(declared.result, declared.name, declared.parameters),
                                          docstring(function)};
        for (const BoundParameter &parameter : function.parameters) {
            texts.insert(texts.end(), {parameter.name, kind_of(parameter), parameter.crossing.text,
                                       makers_of(parameter.crossing)});
        }
        return row(texts);
    }

    static std::string rows_of(const Family &family, const BoundRecord &record, const Record &declared)
    {
        std::string text =
            row({record.name, "record", escaped(declared.comment.beside), family.name, record.c_name});
        std::pair<unsigned, std::string> part;
        for (size_t i = 0; i < record.members.size() && i < declared.members.size(); ++i) {
            const BoundMember &bound = record.members[i];
            const Member &member = declared.members[i];
            const std::pair<unsigned, std::string> own = {member.comment.line, member.comment.above};
            if (part != own) {
                part = own;
                text += row({"", "part", escaped(own.second)});
            }
            text += row({"." + bound.name, "member", escaped(member.comment.beside),
                         declare(member.type, member.name), kind_of(bound)});
        }
        return text;
    }

    void add_constants()
    {
        for (const Constant &constant : model_.constants) {
            const bool is_enumerator = !constant.enumeration.empty();
            sayings_.push_back({constant.header, constant.line, constant.column, constant.comment,
                                row({constant.name, is_enumerator ? "enumerator" : "macro",
                                     escaped(constant.comment.beside)}),
                                is_enumerator});
        }
    }

    void add_types()
    {
        for (const NamedType &type : declarations_.named_types) {
            if (short_name(type.header).empty()) {
                continue;
            }
            const bool is_enumeration = type.type->kind == Type::Kind::Enum;
            const std::string beside = escaped(type.comment.beside);
            sayings_.push_back({type.header, type.line, 0, type.comment,
                                is_enumeration
                                    ? row({type.name, "enumeration", beside, type.type->name})
                                    : row({type.name, "type", beside, declaration_of_type(type)})});
        }
    }

    // With the names of its parameters, where it points to a function.
    static std::string declaration_of_type(const NamedType &type)
    {
        const TypePtr function = type.type->kind == Type::Kind::Pointer ? type.type->target : type.type;
        return function->kind == Type::Kind::Function
                   ? declaration_of(function->target, "(*" + type.name + ")", type.parameters)
                   : declare(type.type, type.name);
    }

    void add_variables()
    {
        for (const BoundVariable &bound : model_.variables) {
            const Variable *declared = variables_.find(bound.name);
            if (declared) {
                sayings_.push_back({declared->header, declared->line, 0, declared->comment,
                                    row({bound.name, "variable", escaped(declared->comment.beside),
                                         declare(declared->type, declared->name)})});
            }
        }
    }

    const Model &model_;
    const Declarations &declarations_;
    const ByName<Function> functions_;
    const ByName<Record> records_;
    const ByName<Variable> variables_;
    std::set<std::string> headers_;
    std::map<std::string, std::vector<std::string>>
        makers_;  ///< classes by the descriptor of what they are given as
    std::vector<Saying> sayings_;
    std::string classes_;
    std::pair<unsigned, std::string> part_;
};

}  // namespace

std::string emit_reference(const Model &model, const Declarations &declarations)
{
    return ReferenceWriter(model, declarations).text();
}

}  // namespace generator
