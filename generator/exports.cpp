#include "exports.h"

#include "output.h"

#include <fcntl.h>
#include <filesystem>
#include <gelf.h>
#include <memory>
#include <regex>
#include <stdexcept>
#include <unistd.h>

namespace generator {

namespace {

class File {
public:
    explicit File(const std::string &path) : descriptor_(open(path.c_str(), O_RDONLY | O_CLOEXEC))
    {
        if (descriptor_ < 0) {
            throw std::runtime_error("cannot read " + path);
        }
    }
    ~File() { close(descriptor_); }
    File(const File &) = delete;
    File &operator=(const File &) = delete;

    int descriptor() const { return descriptor_; }

private:
    int descriptor_;
};

void add_exports(Elf *elf, std::set<std::string> &names)
{
    for (Elf_Scn *section = nullptr; (section = elf_nextscn(elf, section));) {
        GElf_Shdr header;
        Elf_Data *data = elf_getdata(section, nullptr);
        if (!gelf_getshdr(section, &header) || header.sh_type != SHT_DYNSYM || !data
            || header.sh_entsize == 0) {
            continue;
        }
        for (GElf_Xword i = 0; i < header.sh_size / header.sh_entsize; ++i) {
            GElf_Sym symbol;
            if (gelf_getsym(data, static_cast<int>(i), &symbol) && symbol.st_shndx != SHN_UNDEF
                && GELF_ST_BIND(symbol.st_info) != STB_LOCAL) {
                if (const char *name = elf_strptr(elf, header.sh_link, symbol.st_name)) {
                    names.insert(name);
                }
            }
        }
    }
}

// The libraries that a linker's script names with their paths; the linker alone knows where others are.
std::vector<std::string> named_in_script(const std::string &path)
{
    const std::string text = read_file(path);
    std::vector<std::string> named;
    const std::regex library(R"((/[^\s()]*\.so[^\s()]*))");
    if (text.find("GROUP") != std::string::npos || text.find("INPUT") != std::string::npos) {
        for (std::sregex_iterator found(text.begin(), text.end(), library), end; found != end; ++found) {
            named.push_back(found->str());
        }
    }
    if (named.empty()) {
        throw std::runtime_error(path + " is not a shared library");
    }
    return named;
}

void add_exports(const std::string &path, std::set<std::string> &names)
{
    const File file(path);
    const std::unique_ptr<Elf, int (*)(Elf *)> elf(elf_begin(file.descriptor(), ELF_C_READ_MMAP, nullptr),
                                                   elf_end);
    if (elf && elf_kind(elf.get()) == ELF_K_ELF) {
        add_exports(elf.get(), names);
        return;
    }
    for (const std::string &named : named_in_script(path)) {
        if (named != path) {
            add_exports(named, names);
        }
    }
}

}  // namespace

std::set<std::string> exports_of(const std::vector<std::string> &libraries)
{
    elf_version(EV_CURRENT);
    std::set<std::string> names;
    for (const std::string &path : libraries) {
        add_exports(path, names);
    }
    return names;
}

}  // namespace generator
