#include <core/component/ExceptionObject.h>
#include <core/component/IllegalStateException.h>
#include <core/component/LSEHelper.h>
#include <core/component/SCOM_Process.h>
#include <core/component/ThreadException.h>
#include <core/persistence/ExceptionFields.h>

#include "StoredExceptions.h"
#include "support/FailingMemory.h"
#include "support/ProcessTest.h"

// A class of the program itself, which adds a field.
namespace core {

inline constexpr _GUID CLSID_TableExceptionObject = "f8b1d9a6-5a0e-4e0c-9f64-0f8f5e4b7a11"_guid;

class TableException : public Exception {
public:
    explicit TableException(const stdx::ustring& row = {})
        : Exception(CLSID_TableExceptionObject, u"bad row", nullptr), row_(row) {
        expectedWhenMade = LSEHelper::expected();
    }
    const stdx::ustring& row() const noexcept { return row_; }

    void serialize(IOutPersistenceStorage* storage) const;
    void deserialize(IInPersistenceStorage* storage);

    static inline bool expectedWhenMade = false;

private:
    stdx::ustring row_;
};

} // namespace core

ORBCORE_EXCEPTION_FIELDS(TableException, row_);
ORBCORE_EXCEPTION_OBJECT(TableException);

namespace {

using namespace core;
using namespace stdx::literals;

using ExceptionObject_ = test::ProcessTest;

std::uint32_t references_of(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

TEST_F(ExceptionObject_, OfAClassOfTheHostThrowsThatClass) {
    const auto object = TableException(u"a row that is long").object();
    ASSERT_TRUE(object);
    try {
        object->rethrow();
    } catch (const TableException& thrown) {
        EXPECT_EQ(thrown.row(), u"a row that is long"_us);
    }
}

TEST_F(ExceptionObject_, OfAClassOfTheHostIsStoredWithItsFields) {
    const auto object = test::from_text(test::to_text(TableException(u"7").object().get()));
    ASSERT_TRUE(object);
    EXPECT_THROW(object->rethrow(), TableException);
    EXPECT_EQ(static_cast<TableException*>(object->exception())->row(), u"7"_us);
}

TEST_F(ExceptionObject_, HoldsACopyThatCanBeChanged) {
    const IllegalStateException original;
    const auto cause = Exception(u"cause").object();
    const auto object = original.object();
    object->setDescription(u"changed");
    object->setInner(cause.get());
    EXPECT_EQ(object->exception()->description(), u"changed"_us);
    EXPECT_EQ(object->exception()->inner(), cause.get());
    EXPECT_EQ(references_of(cause.get()), 2u);
    EXPECT_EQ(original.inner(), nullptr);
    EXPECT_THROW(object->rethrow(), IllegalStateException);
    object->setInner(nullptr);
    EXPECT_EQ(references_of(cause.get()), 1u);
}

TEST_F(ExceptionObject_, IsNotMadeWhereTheClassIsUnknown) {
    EXPECT_FALSE(Exception("a6a50b87-8f59-4cc5-8f29-ff5df6ff9c3c"_guid, u"x", nullptr).object());
    revoke_SCOM_class(CLSID_ExceptionObject);
    EXPECT_FALSE(Exception(u"x").object());
}

TEST(ExceptionObjectWithoutProcess, IsNull) {
    EXPECT_FALSE(Exception(u"x").object());
}

TEST_F(ExceptionObject_, WithoutMemoryThrowsBadAlloc) {
    const Exception exception(u"x");
    const test::FailingMemory none(0);
    EXPECT_THROW(exception.object(), std::bad_alloc);
}

TEST_F(ExceptionObject_, RefusesAnExceptionOfAnotherClass) {
    const auto object = create_object<IExceptionObject>(CLSID_TableExceptionObject);
    const auto other = IllegalStateException().object();
    EXPECT_THROW(object->assign(*other->exception()), IllegalArgumentException);
    EXPECT_THROW(other->assign(*object->exception()), IllegalArgumentException);
}

TEST_F(ExceptionObject_, IsBlankWhenNew) {
    const auto object = create_object<IExceptionObject>(CLSID_ExceptionObject);
    EXPECT_EQ(object->exception()->description(), u""_us);
    EXPECT_EQ(object->exception()->creationStackTrace(), u""_us);
}

TEST_F(ExceptionObject_, IsWorkThatIsExpected) {
    EXPECT_FALSE(LSEHelper::expected());
    const TableException outside;
    EXPECT_FALSE(TableException::expectedWhenMade);
    EXPECT_TRUE(outside.object()); // makes a blank one inside
    EXPECT_TRUE(TableException::expectedWhenMade);
    EXPECT_FALSE(LSEHelper::expected());

    const LSEHelper first;
    { const LSEHelper second; }
    EXPECT_TRUE(LSEHelper::expected());
}

TEST_F(ExceptionObject_, IsFoundInItsChain) {
    const auto deepest = ThreadException(ThreadException::Error::Timeout).object();
    const auto middle = IllegalStateException(deepest.get()).object();
    const auto top = Exception(u"top", middle.get()).object();
    const struct {
        const _GUID& objectClass;
        IExceptionObject* found;
    } rows[] = {
        {CLSID_ExceptionObject, top.get()},
        {CLSID_IllegalStateExceptionObject, middle.get()},
        {CLSID_ThreadExceptionObject, deepest.get()},
        {CLSID_TableExceptionObject, nullptr},
    };
    for (const auto& row : rows)
        EXPECT_EQ(get_exception_object(top.get(), row.objectClass), row.found);
    EXPECT_FALSE(get_exception_object(nullptr, CLSID_ExceptionObject));
    // What the walk took it gave back: one reference here, and one of the exception above.
    EXPECT_EQ(references_of(top.get()), 1u);
    EXPECT_EQ(references_of(middle.get()), 2u);
    EXPECT_EQ(references_of(deepest.get()), 2u);
}

} // namespace
