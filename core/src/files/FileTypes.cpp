#include <core/files/FileTypes.h>

#include <core/component/IllegalArgumentException.h>

#include <iterator>

namespace core {
namespace {

constexpr const char16_t* kExtensions[] = {
    u"txt", u"xml", u"bin", u"html", u"png", u"jpg", u"ico",    u"cur",    u"gif",    u"bmp",
    u"tif", u"emf", u"wmf", u"zip",  u"svg", u"opk", u"opkupd", u"opkrep", u"orbstg",
};
static_assert(std::size(kExtensions) == FileTypes::Storage + 1);

} // namespace

stdx::ustring file_extension(FileTypes::type type) {
    if (type == FileTypes::None) return {};
    ORB_ASSERT(type >= 0 && static_cast<std::size_t>(type) < std::size(kExtensions));
    return kExtensions[type];
}

} // namespace core
