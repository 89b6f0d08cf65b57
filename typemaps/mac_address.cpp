#include "mac_address.h"

#include <cstring>

namespace quorel {

namespace {

constexpr int fields = 6;

bool is_space(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

int digit_value(char c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// One field of at most two characters, a sign and an "0x" counted; returns its end, or null if there is none.
const char *parse_field(const char *text, unsigned *value)
{
    while (is_space(*text)) {
        ++text;
    }
    int width = 2;
    bool negative = *text == '-';
    if (negative || *text == '+') {
        ++text;
        --width;
    }
    bool any = false;
    unsigned number = 0;
    if (*text == '0') {
        any = true;
        ++text;
        --width;
        if (width > 0 && (*text | 0x20) == 'x') {
            ++text;
            --width;
        }
    }
    for (int digit; width > 0 && (digit = digit_value(*text)) >= 0; --width, ++text) {
        any = true;
        number = number * 16 + static_cast<unsigned>(digit);
    }
    *value = negative ? 0u - number : number;
    return any ? text : nullptr;
}

}  // namespace

bool parse_mac(const char *text, bcm_mac_t mac)
{
    unsigned char bytes[fields];
    for (int i = 0; i < fields; ++i) {
        if (i > 0 && *text++ != ':') {
            return false;
        }
        unsigned value;
        text = parse_field(text, &value);
        if (!text) {
            return false;
        }
        bytes[i] = static_cast<unsigned char>(value);
    }
    std::memcpy(mac, bytes, sizeof bytes);
    return true;
}

void format_mac(const unsigned char *mac, char *text)
{
    constexpr char digits[] = "0123456789abcdef";
    // Unrolled, it takes half the instructions; a table of many addresses is mostly this.
#pragma GCC unroll 6
    for (int i = 0; i < fields; ++i) {
        text[3 * i] = digits[mac[i] >> 4];
        text[3 * i + 1] = digits[mac[i] & 15];
        if (i < fields - 1) {
            text[3 * i + 2] = ':';
        }
    }
}

bool to_mac_address(Borrowed object, bcm_mac_t mac)
{
    const char *text = PyString_AsString(object);
    if (!text) {
        PyErr_SetString(PyExc_TypeError, "Expected a string");
        return false;
    }
    if (parse_mac(text, mac)) {
        return true;
    }
    PyErr_SetString(PyExc_ValueError, "Expected a string of the form 'AA:BB:CC:DD:EE:FF'");
    return false;
}

NewReference from_mac_address(const unsigned char *mac)
{
    PyObject *text = PyString_FromStringAndSize(nullptr, mac_text_length);
    if (text) {
        format_mac(mac, PyString_AS_STRING(text));
    }
    return text;
}

NewReference get_mac_address(const MemberRow &row, PyObject *args)
{
    HeldPointer self = self_of_getter(row, args);
    return self ? from_mac_address(reinterpret_cast<const unsigned char *>(self.at(row.offset))) : nullptr;
}

NewReference set_mac_address(const MemberRow &row, PyObject *args)
{
    SetterArguments setter = arguments_of_setter(row, args);
    bcm_mac_t mac;
    if (setter.failed || !to_mac_address(setter.value, mac)) {
        return nullptr;
    }
    if (setter.self) {
        std::memcpy(setter.self.at(row.offset), mac, sizeof mac);
    }
    return new_none();
}

}  // namespace quorel
