#include "cxx_words.h"
#include "emit.h"
#include "output.h"

#include <fmt/format.h>

namespace generator {

namespace {

struct Accessors {
    std::string get, set;
};

const char *pointer_setter(Conversion conversion)
{
    return conversion == Conversion::AnyPointer ? "set_any_pointer"
           : conversion == Conversion::Callback ? "set_callback"
                                                : "set_pointer";
}

Accessors accessors_of(const BoundMember &member)
{
    switch (member.storage) {
    case Storage::Array:
        return {"get_storage", "set_array"};
    case Storage::Record:
        return {"get_storage", "set_record"};
    case Storage::Opaque:
        return {"get_copy", "set_record"};
    case Storage::Pointer:
        return {"get_pointer", pointer_setter(member.crossing.conversion)};
    case Storage::Mapped:
        return {"get_" + member.crossing.typemap->name, "set_" + member.crossing.typemap->name};
    case Storage::Text:
        return {"get_text", "set_text"};
    case Storage::Bits:
        return {"get_bits", "set_bits"};
    case Storage::Scalar:
        break;
    }
    std::string name = conversion_name(member.crossing.conversion);
    return {"get_" + name, "set_" + name};
}

// What its parts are named by; a keyword is not part of that.
std::string scope_of(const BoundRecord &record)
{
    for (const std::string keyword : {"struct ", "union "}) {
        if (record.cxx_name.compare(0, keyword.size(), keyword) == 0) {
            return record.cxx_name.substr(keyword.size());
        }
    }
    return record.cxx_name;
}

// Collects the rows and stubs of one file.
class RecordWriter {
public:
    RecordWriter(const std::string &family, const Numbering &numbering)
        : prefix_(family + "_"), numbering_(numbering), group_(numbering.group("records_" + family))
    {
    }

    void add(const BoundRecord &record)
    {
        const std::string row = fmt::format("{}records[{}]", prefix_, records_++);
        unsigned constructor = stub("new_" + record.name, "new_record", row);
        stub("delete_" + record.name, "delete_record", row);
        stub(record.name + "_swigregister", "register_record", row);
        record_rows_ +=
            fmt::format("    {{{}, {}, sizeof({})}},\n", constructor, argument(record.self), record.cxx_name);
        follow(row + ".constructor",
               {"new_" + record.name, "delete_" + record.name, record.name + "_swigregister"});
        for (const BoundMember &member : record.members) {
            add(record, member);
        }
    }

    void add(const BoundPointerClass &bound)
    {
        const std::string row = fmt::format("{}pointer_classes[{}]", prefix_, pointer_classes_++);
        const std::string size = fmt::format("sizeof({})", bound.element.text);
        bool record = bound.element.conversion == Conversion::Value;
        std::string kind = conversion_name(bound.element.conversion), member = next_member();
        std::string getter_name = record ? "get_copy" : "get_" + kind,
                    setter_name = record ? "set_record" : "set_" + kind;
        unsigned constructor = stub("new_" + bound.name, "new_pointer_class", row);
        stub("delete_" + bound.name, "delete_pointer_class", row);
        stub(bound.name + "_assign", setter_name, member);
        unsigned getter = stub(bound.name + "_value", getter_name, member);
        stub(bound.name + "_cast", "cast_pointer_class", row);
        stub(bound.name + "_frompointer", "pointer_class_from_pointer", row);
        stub(bound.name + "_swigregister", "register_pointer_class", row);
        member_row(getter, bound.self, bound.element, 0, "0", size);
        follow(row + ".constructor",
               {"new_" + bound.name, "delete_" + bound.name, bound.name + "_assign", bound.name + "_value",
                bound.name + "_cast", bound.name + "_frompointer", bound.name + "_swigregister"});
        pointer_class_rows_ += fmt::format("    {{{}, {}, {}, {}}},\n", constructor, argument(bound.self),
                                           argument(bound.pointer), size);
    }

    void add(const BoundArray &array)
    {
        const std::string row = fmt::format("{}arrays[{}]", prefix_, arrays_++);
        bool record = array.element.conversion == Conversion::Value;
        std::string kind = record ? "record" : conversion_name(array.element.conversion);
        unsigned constructor = stub("new_" + array.name, "new_array", row);
        stub("delete_" + array.name, "delete_array", row);
        stub(array.name + "_getitem", "get_item_" + kind, row);
        stub(array.name + "_setitem", "set_item_" + kind, row);
        follow(row + ".constructor", {"new_" + array.name, "delete_" + array.name, array.name + "_getitem",
                                      array.name + "_setitem"});
        array_rows_ += fmt::format("    {{{}, {}, sizeof({})}},\n", constructor,
                                   numbering_.arguments({array.pointer, array.index, array.element}),
                                   array.element.text);
    }

    std::string text() const
    {
        return table("RecordRow", "records", record_rows_)
               + table("PointerClassRow", "pointer_classes", pointer_class_rows_)
               + table("ArrayRow", "arrays", array_rows_) + table("MemberRow", "members", member_rows_)
               + checks_ + (checks_.empty() ? "" : "\n") + stubs_;
    }

    /// What the runtime relies on: methods of a row follow each other.
    std::string order() const { return order_.empty() ? "" : "\n" + order_; }

private:
    void add(const BoundRecord &record, const BoundMember &member)
    {
        std::string row = next_member(), prefix = record.name + "_" + member.name;
        const std::string cxx_name = name_in_cxx(member.name);
        Accessors accessors = accessors_of(member);
        const bool is_bits = member.storage == Storage::Bits;
        const std::string bits = is_bits ? ", " + bits_of(record, member) : "";
        if (!member.read_only) {
            stub(prefix + "_set", accessors.set, row, bits);
        }
        unsigned getter = stub(prefix + "_get", accessors.get, row, bits);
        member_row(
            getter, record.self, member.crossing, record.name.size() + 1,
            is_bits ? "0" : fmt::format("offsetof({}, {})", record.cxx_name, cxx_name),
            is_bits || !member.sized ? "0" : fmt::format("sizeof({}::{})", scope_of(record), cxx_name));
        if (!member.read_only) {
            follow(row + ".getter - 1", {prefix + "_set", prefix + "_get"});
        }
        if (member.storage == Storage::Scalar && member.crossing.conversion == Conversion::Int32) {
            checks_ += fmt::format("static_assert(sizeof({}::{}) == sizeof(int32_t), \"\");\n",
                                   scope_of(record), cxx_name);
        }
    }

    // What reads and writes a bit-field, which has no address: an object of module/bit_field.h.
    static std::string bits_of(const BoundRecord &record, const BoundMember &member)
    {
        const std::string cxx_name = name_in_cxx(member.name);
        const std::string self = fmt::format("static_cast<{}*>(self)->{}", record.cxx_name + " ", cxx_name);
        const std::string write =
            member.read_only
                ? "nullptr"
                : fmt::format(
                    "[](void *self, uint64_t value) {{ {0} = static_cast<decltype({1}::{2})>(value); }}",
                    self, scope_of(record), cxx_name);
        return fmt::format(
            "{{[](void *self) {{ return static_cast<uint64_t>({}); }},\n"
            "        {}, {}, {}}}",
            self, write, member.bits, member.is_signed);
    }

    void member_row(unsigned getter, const Crossing &self, const Crossing &value, size_t name_offset,
                    const std::string &offset, const std::string &size)
    {
        ++members_;
        member_rows_ += fmt::format("    {{{}, {}, {}, {}, {}, {}}},\n", getter, argument(self),
                                    argument(value), name_offset, offset, size);
    }

    std::string next_member() const { return fmt::format("{}members[{}]", prefix_, members_); }

    std::string argument(const Crossing &crossing) const
    {
        return std::to_string(numbering_.arguments({crossing}));
    }

    // Returns the method's number.
    unsigned stub(const std::string &name, const std::string &function, const std::string &row,
                  const std::string &more = {})
    {
        stubs_ += fmt::format(
            "PyObject *py_{}(PyObject *, PyObject *args)\n{{\n"
            "    return {}({}, args{});\n}}\n\n",
            name, function, row, more);
        return numbering_.method(name);
    }

    // Asserts that these methods follow the one whose number a row holds.
    void follow(const std::string &number, const std::vector<std::string> &names)
    {
        order_ += fmt::format("static_assert(follow({}_functions + ({} - {}), {{py_{}}}), \"\");\n",
                              group_.name, number, group_.first, fmt::join(names, ", py_"));
    }

    std::string table(const std::string &type, const std::string &name, const std::string &rows) const
    {
        return rows.empty() ? ""
                            : fmt::format("constexpr {} {}{}[] = {{\n{}}};\n\n", type, prefix_, name, rows);
    }

    // Tables are named after the family, since files of several families are compiled as one.
    std::string prefix_;
    const Numbering &numbering_;
    size_t records_ = 0, pointer_classes_ = 0, arrays_ = 0, members_ = 0;
    const Numbering::Group &group_;
    std::string record_rows_, pointer_class_rows_, array_rows_, member_rows_, checks_, stubs_, order_;
};

bool has_bit_fields(const Family &family)
{
    for (const BoundRecord &record : family.records) {
        for (const BoundMember &member : record.members) {
            if (member.storage == Storage::Bits) {
                return true;
            }
        }
    }
    return false;
}

}  // namespace

std::string emit_group(const Numbering::Group &group)
{
    if (group.methods.empty()) {
        return fmt::format(
            "void {0}_enter(PyMethodDef *);\n"
            "void {0}_enter(PyMethodDef *) {{}}\n"
            "extern const char {0}_docs[] = \"\";\n",
            group.name);
    }
    std::string functions, entries, docs;
    for (const Numbering::Method &method : group.methods) {
        functions += fmt::format("    py_{},\n", method.name);
        entries += fmt::format("    (rows++)->ml_meth = py_{};\n", method.name);
        docs += fmt::format("    {}\n", literal_with_nul(method.doc));
    }
    return fmt::format(
        "[[maybe_unused]] constexpr PyCFunction {0}_functions[] = {{\n{1}}};\n\n"
        "void {0}_enter(PyMethodDef *rows);\n"
        "void {0}_enter(PyMethodDef *rows)\n{{\n{2}}}\n\n"
        "extern const char {0}_docs[] =\n{3}    ;\n",
        group.name, functions, entries, docs);
}

std::string emit_records(const Family &family, const Numbering &numbering)
{
    RecordWriter writer(family.name, numbering);
    for (const BoundPointerClass &bound : family.pointer_classes) {
        writer.add(bound);
    }
    for (const BoundArray &array : family.arrays) {
        writer.add(array);
    }
    for (const BoundRecord &record : family.records) {
        writer.add(record);
    }
    return banner("Records, pointer classes and arrays of the family '" + family.name + "'.",
                  "interface/" + family.name + ".toml and the headers that it names") +
           includes(family.included, {}) +
           "\n#include \"module/array.h\"\n" + (has_bit_fields(family) ? "#include \"module/bit_field.h\"\n" : "")
           + "#include \"module/pointer_class.h\"\n#include \"shapes.h\"\n\n"
           "#include <cstddef>\n\nnamespace quorel {\n\nnamespace {\n\n" +
           writer.text() + "}  // namespace\n\n" + emit_group(numbering.group("records_" + family.name)) +
           writer.order() + "\n}  // namespace quorel\n";
}

}  // namespace generator
