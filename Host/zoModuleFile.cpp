#include "zoModuleFile.h"

#include <QFile>
#include <QFileInfo>

#include <elf.h>

#include <cstring>
#include <vector>

namespace
{
// Some tables of large libraries have a dozen rows.
constexpr int s_mostSegments = 1024;

// Whether this many bytes from there on lie in the file; no sum that overflows.
bool isWithin(quint64 offset, quint64 size, quint64 fileSize)
{
    return offset <= fileSize && size <= fileSize - offset;
}

bool isOfThisKind(const Elf64_Ehdr& header)
{
    return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 && header.e_ident[EI_CLASS] == ELFCLASS64 &&
           header.e_ident[EI_DATA] == ELFDATA2LSB;
}

// What the loader follows before any check of its own: the dynamic section lies in what is mapped.
bool isMapped(const Elf64_Phdr& dynamic, const std::vector<Elf64_Phdr>& segments)
{
    for (const Elf64_Phdr& segment : segments) {
        if (segment.p_type == PT_LOAD && dynamic.p_vaddr >= segment.p_vaddr &&
            isWithin(dynamic.p_vaddr - segment.p_vaddr, dynamic.p_memsz, segment.p_memsz))
            return true;
    }
    return false;
}
} // namespace

QString zoModuleFile::flawOf(const QString& fileName)
{
    // A pipe would be waited for, a device has no end.
    if (!QFileInfo(fileName).isFile())
        return tr("It is no file");
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    const auto size = quint64(file.size());
    Elf64_Ehdr header{};
    if (file.read(reinterpret_cast<char*>(&header), sizeof header) != qint64(sizeof header) ||
        !isOfThisKind(header))
        return {};
    const QString cut = tr("The file is cut off: it has %1 bytes, and its own headers name more. Install or "
                           "copy it anew")
                            .arg(size);
    const QString broken =
        tr("The file is damaged: its headers contradict each other. Install or copy it anew");
    if (header.e_phentsize != sizeof(Elf64_Phdr) || header.e_phnum == 0 || header.e_phnum > s_mostSegments)
        return broken;
    if (!isWithin(header.e_phoff, header.e_phnum * sizeof(Elf64_Phdr), size) ||
        !isWithin(header.e_shoff, quint64(header.e_shnum) * header.e_shentsize, size))
        return cut;
    std::vector<Elf64_Phdr> segments(header.e_phnum);
    const qint64 bytes = qint64(segments.size()) * qint64(sizeof(Elf64_Phdr));
    if (!file.seek(qint64(header.e_phoff)) ||
        file.read(reinterpret_cast<char*>(segments.data()), bytes) != bytes)
        return cut;
    bool hasDynamic = false;
    for (const Elf64_Phdr& segment : segments) {
        if (segment.p_type == PT_LOAD && !isWithin(segment.p_offset, segment.p_filesz, size))
            return cut;
        if (segment.p_type == PT_LOAD && segment.p_memsz < segment.p_filesz)
            return broken;
        if (segment.p_type != PT_DYNAMIC)
            continue;
        hasDynamic = true;
        if (!isWithin(segment.p_offset, segment.p_filesz, size))
            return cut;
        if (!isMapped(segment, segments))
            return broken;
    }
    return hasDynamic ? QString() : broken;
}
