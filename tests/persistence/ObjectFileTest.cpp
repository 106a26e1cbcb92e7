// Files that hold one object, in each form, whole and damaged.

#include "support/MessageLanguage.h"
#include "support/ProcessTest.h"

#include <core/core.h>
#include <core/persistence/ObjectFile.h>

#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace {

using core::StorageForm;

class ObjectFile : public test::ProcessTest {
protected:
    ObjectFile()
        : folder_(std::filesystem::temp_directory_path() /
                  ("object_file_test." + std::to_string(::getpid()))) {
        std::filesystem::create_directories(folder_);
    }
    ~ObjectFile() override { std::filesystem::remove_all(folder_); }

    core::URL url(const char* name) const {
        return core::file_url(core::from_utf8((folder_ / name).c_str()));
    }
    void write(const char* name, std::string_view bytes) const {
        std::ofstream(folder_ / name, std::ios::binary) << bytes;
    }
    std::string bytes(const char* name) const {
        std::ifstream in(folder_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    // The messages of a failure and its causes, a line each.
    std::string failure(const char* name) const {
        try {
            core::load_object(url(name));
            return "";
        } catch (const core::Exception& exception) {
            std::string text = core::to_utf8(exception.description()).c_str();
            if (exception.inner())
                text += std::string("\n") +
                        core::to_utf8(exception.inner()->exception()->description()).c_str();
            return text;
        }
    }

    const std::filesystem::path folder_;
};

core::InterfacePtr<core::IPersistableObject> sample() {
    return core::InterfacePtr<core::IPersistableObject>(
        core::ThreadException(core::ThreadException::Error::Timeout).object());
}

TEST_F(ObjectFile, KeepsTheObjectInEveryForm) {
    for (const auto form : {StorageForm::Text, StorageForm::Binary, StorageForm::Compact}) {
        SCOPED_TRACE(static_cast<int>(form));
        core::save_object(sample().get(), url("object"), form);
        EXPECT_FALSE(std::filesystem::exists(folder_ / "object.new"));
        const core::InterfacePtr<core::IExceptionObject> read(core::load_object(url("object")));
        EXPECT_THROW(read->rethrow(), core::ThreadException);
    }
}

TEST_F(ObjectFile, StaysAsItWasWhenAnObjectCannotBeWritten) {
    write("object", "what was there");
    const struct Broken : core::IPersistableObject {
        HRESULT QueryInterface(const _GUID&, void**) noexcept override { return E_NOINTERFACE; }
        std::uint32_t AddRef() noexcept override { return 1; }
        std::uint32_t Release() noexcept override { return 1; }
        const _GUID& getClsid() override { return core::CLSID_ExceptionObject; }
        void serialize(core::IOutPersistenceStorage*) override { throw core::Exception(u"no"); }
        void deserialize(core::IInPersistenceStorage*) override {}
    } broken;
    EXPECT_THROW(core::save_object(const_cast<Broken*>(&broken), url("object")), core::Exception);
    EXPECT_EQ(bytes("object"), "what was there");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "object.new"));

    std::filesystem::create_directory(folder_ / "directory"); // nothing can take its place
    EXPECT_THROW(core::save_object(sample().get(), url("directory")), core::FileException);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "directory.new"));

    // Somebody else is saving: that file is left to him.
    write("object.new", "");
    const auto other = core::get_service<core::IFileSystem>()->open(
        url("object.new"), core::kFileWrite | core::kFileKeep);
    EXPECT_THROW(core::save_object(sample().get(), url("object")), core::FileException);
    EXPECT_TRUE(std::filesystem::exists(folder_ / "object.new"));
    EXPECT_EQ(bytes("object"), "what was there");
}

TEST_F(ObjectFile, SaysWhatIsWrongWithAFile) {
    const test::MessageLanguage english(u"en");
    const std::string unreadable = "No object can be read from the file \"" +
                                   std::string(core::to_utf8(url("bad").presentation()).c_str()) +
                                   "\"\n";
    const std::string damaged = unreadable + "The list is damaged or of another kind";
    const struct {
        const char* what;
        std::string bytes;
        std::string message;
    } rows[] = {
        {"nothing", "", damaged},
        {"no list", "text", damaged},
        {"no class", "{1}", damaged},
        {"a class alone", "{9bed88ff-dcab-4217-b1a4-cf9c350df979}", damaged},
        {"a compact file cut off", std::string("\1\1\7\0", 4), damaged},
        {"a binary list cut off", "\x5F", damaged},
        {"an exception with other categories",
         "{9bed88ff-dcab-4217-b1a4-cf9c350df979,{9bed88ff-dcab-4217-b1a4-cf9c350df979,\"\","
         "{00000000-0000-0000-0000-000000000000},\"\",\"2\",00000000-0000-0000-0000-000000000000}}",
         damaged},
        {"an unknown class", "{12345678-dcab-4217-b1a4-cf9c350df979,1}",
         unreadable +
             "The class 12345678-dcab-4217-b1a4-cf9c350df979 of the stored object is unknown"},
        {"a class that does not persist", "{b9ddf02b-9b3d-4d30-8265-7e68d5360a90,1}",
         unreadable +
             "The class b9ddf02b-9b3d-4d30-8265-7e68d5360a90 of the stored object is unknown"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        write("bad", row.bytes);
        EXPECT_EQ(failure("bad"), row.message);
    }
    EXPECT_THROW(core::load_object(url("none")), core::FileException);
}

} // namespace
