#include "toolkit/builtinpictures.h"

#include <cstring>
#include <string_view>
#include <unordered_map>

namespace skinwidgets
{

namespace
{

const BuiltinPicture* findRecord(const char* name)
{
    for (const BuiltinPicture* record = builtinPictures; record->data; ++record)
        if (std::strcmp(record->name, name) == 0)
            return record;
    return nullptr;
}

} // namespace

QByteArray findBuiltinImage(const char* name)
{
    // The keys are the names in the table, which live as long as the library does.
    static std::unordered_map<std::string_view, QByteArray> found;
    static const QByteArray nothing;

    if (!name)
        return nothing;
    const auto known = found.find(name);
    if (known != found.end())
        return known->second;
    const BuiltinPicture* record = findRecord(name);
    if (!record)
        return nothing;
    const auto* bytes = reinterpret_cast<const char*>(record->data);
    return found.emplace(record->name, QByteArray::fromRawData(bytes, qsizetype(record->size))).first->second;
}

} // namespace skinwidgets
