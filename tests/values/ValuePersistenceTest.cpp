// Values as lists, in both forms, and lists that are no values.
#include "SampleTypes.h"
#include "persistence/StorageProgram.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/CompatibilityMode.h>
#include <core/persistence/SerializeGuard.h>
#include <core/streams/ListStreamException.h>

namespace {

using namespace core;
using namespace core::literals;
using namespace test;

class ValuePersistence : public ProcessTest {};

constexpr StorageKind kForms[] = {kStream, kBinary};

Value plain_value() {
    return Value(static_cast<IValue*>(make_object<PlainValue>().get()));
}
Value stored_value(const Value& held) {
    auto value = make_object<StoredValue>();
    value->held = held;
    return Value(static_cast<IValue*>(value.get()));
}
const Value& held_by(const Value& value) {
    return static_cast<StoredValue*>(value.lentIValue())->held;
}

std::string bytes_of(const StorageKind& kind, const Value& value, bool isIndirect = false) {
    return stored(kind, [&](IOutPersistenceStorage& storage) {
        storage.setIndirect(isIndirect);
        value.serialize(&storage);
    });
}

// What is read over the value 77.
Value value_of(const StorageKind& kind, std::string_view bytes) {
    const auto file = source_of(bytes, true);
    Value value = 77;
    GenericValue::deserialize(open_in(kind, file.get()).get(), value);
    return value;
}
Value value_of(const char16_t* text) {
    Value value = 77;
    GenericValue::fromString(text, value);
    return value;
}

stdx::ustring text_of(const Value& value) {
    stdx::ustring text;
    value.toString(text);
    return text;
}

std::vector<Value> samples() {
    return {Value(),
            Value(create_null_value()),
            true,
            false,
            0,
            -12.5_num,
            Numeric(10).pow(100),
            u"",
            u"a \"quoted\" {text}, Рига\n",
            Date(),
            Date(2020, 5, 15, 10, 20, 30),
            type_value(CLSID_DateType),
            type_value("12345678-0000-0000-0000-000000000000"_guid)};
}

TEST_F(ValuePersistence, IsWrittenAsItIsDescribed) {
    const char16_t* const texts[] = {
        u"{\"U\"}",
        u"{\"L\"}",
        u"{\"B\",1}",
        u"{\"B\",0}",
        u"{\"N\",0}",
        u"{\"N\",-12.5}",
        nullptr, // a hundred digits
        u"{\"S\",\"\"}",
        u"{\"S\",\"a \"\"quoted\"\" {text}, Рига\n\"}",
        u"{\"D\",00010101000000}",
        u"{\"D\",20200515102030}",
        u"{\"T\",aae38c48-a877-411c-a6d3-fbaa1f83c4bd}",
        u"{\"T\",12345678-0000-0000-0000-000000000000}",
    };
    const std::vector<Value> values = samples();
    for (std::size_t i = 0; i != values.size(); ++i)
        if (texts[i]) {
            EXPECT_EQ(text_of(values[i]), texts[i]);
        }
    EXPECT_EQ(text_of(stored_value(1)),
              u"{\"#\",e5027caf-0242-4b89-be79-8b90d7684436,\n{\"N\",1}\n}");
    EXPECT_EQ(text_of(plain_value()), u"{\"#\",4974bfa9-c9eb-4940-af39-6fe2be2812a9}");
}

TEST_F(ValuePersistence, ComesBack) {
    for (const Value& value : samples()) {
        EXPECT_TRUE(value_of(text_of(value).c_str()) == value) << value.hashCode0();
        for (const StorageKind& kind : kForms) {
            EXPECT_TRUE(value_of(kind, bytes_of(kind, value)) == value) << value.hashCode0();
            // Inside of an object, and of one within another.
            const Value nested = stored_value(stored_value(value));
            EXPECT_TRUE(held_by(held_by(value_of(kind, bytes_of(kind, nested)))) == value);
        }
    }
}

TEST_F(ValuePersistence, StoragesAskForTheShortForm) {
    for (const StorageKind& kind : kForms) {
        EXPECT_EQ(held_by(value_of(kind, bytes_of(kind, stored_value(5), true))), 1000);
        EXPECT_EQ(held_by(value_of(kind, bytes_of(kind, stored_value(5)))), 5);
        EXPECT_EQ(value_of(kind, bytes_of(kind, 5, true)), 5); // has no other form
    }
    EXPECT_EQ(bytes_of(kStream, stored_value(5), true),
              "\xEF\xBB\xBF{\"@\",e5027caf-0242-4b89-be79-8b90d7684436,1000}");
}

// Whoever saves is told of values that leave nothing behind.
class Told
    : public ObjectRoot
    , public SCOM_InternalClass<Told>
    , public ISerializeErrorHandler {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<Told, ISerializeErrorHandler>();
    }
    void onSerializeError(IUnknown* value) override { values.push_back(value); }

    std::vector<IUnknown*> values;
};

inline constexpr _GUID CLSID_Platform = "fa95a4f3-0eb0-432f-b370-8f9cb6bb5a22"_guid;

// A platform of the compatibility mode that a test asks for.
class Platform
    : public ObjectRoot
    , public SCOM_Service<Platform, &CLSID_Platform, &IID_IPresentationService>
    , public IPresentationService {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<Platform, IPresentationService>();
    }
    int getCompatibilityMode() override { return mode; }

    static inline int mode = kNewestCompatibilityMode;
};

} // namespace

ORBCORE_REGISTER(Platform);

namespace {

TEST_F(ValuePersistence, TellsOfWhatCannotBeStored) {
    const auto told = make_object<Told>();
    const auto guard = create_serialize_guard(told.get());
    const Value plain = plain_value();
    text_of(plain);
    text_of(stored_value(plain));
    text_of(stored_value(1));
    IUnknown* const object = plain.lentIValue();
    EXPECT_EQ(told->values, (std::vector<IUnknown*>{object, object}));
    EXPECT_TRUE(is_undefined_value(value_of(kBinary, bytes_of(kBinary, plain))));

    told->values.clear();
    for (const int mode : {80304, 80305}) {
        Platform::mode = mode;
        text_of(plain);
        EXPECT_EQ(told->values.size(), mode == 80305 ? 1u : 0u);
    }
    Platform::mode = kNewestCompatibilityMode;
}

TEST_F(ValuePersistence, ReadsWhatItDoesNotKnow) {
    const struct {
        const char16_t* text;
        Value value; // 77 stays where nothing is assigned
    } rows[] = {
        {u"{\"Q\",{1,2},\"x\"}", 77},
        {u"{\"\"}", 77},
        {u"{\"NN\",5}", 77},
        {u"{\"#\",12345678-0000-0000-0000-000000000000,{1,{2}},3}", Value()},
        {u"{\"@\",12345678-0000-0000-0000-000000000000}", Value()},
        // A class that is there, but no type: an exception, and a storage.
        {u"{\"#\",9bed88ff-dcab-4217-b1a4-cf9c350df979,1}", Value()},
        {u"{\"#\",7dcc2742-039d-4409-bd19-27b85e01b509,1}", Value()},
        // A base type by its class.
        {u"{\"#\",b0be78f2-0ee6-4d31-a3bb-77dd32ba5bec,12}", 12},
        // Types without values that could be stored, one of them with no object at all.
        {u"{\"#\",4974bfa9-c9eb-4940-af39-6fe2be2812a9,{5},6}", Value()},
        {u"{\"@\",4974bfa9-c9eb-4940-af39-6fe2be2812a9}", Value()},
        {u"{\"#\",2319dcf1-f4ee-438d-b16f-6a145d6b9422,1}", Value()},
    };
    for (const auto& row : rows) EXPECT_TRUE(value_of(row.text) == row.value) << to_utf8(row.text);
}

TEST_F(ValuePersistence, RefusesDamage) {
    for (const char16_t* const text :
         {u"", u"x", u"{", u"{}", u"{N,1}", u"{\"N\"}", u"{\"N\",x}", u"{\"N\",1", u"{\"N\",1,2}",
          u"{\"S\",\"x}", u"{\"B\",yes}", u"{\"D\",99999999}", u"{\"T\",1}", u"{\"#\"}",
          u"{\"#\",e5027caf-0242-4b89-be79-8b90d7684436,{\"N\"}}",
          u"{\"#\",e5027caf-0242-4b89-be79-8b90d7684436,\"S\"}"})
        EXPECT_THROW(value_of(text), ListStreamException) << to_utf8(text);

    // Every beginning of a list is refused; for text the mark of the encoding may be missing.
    const Value value = stored_value(stored_value(u"text \u0416"));
    for (const StorageKind& kind : kForms) {
        const std::string bytes = bytes_of(kind, value);
        for (std::size_t size = 0; size != bytes.size(); ++size)
            EXPECT_ANY_THROW(value_of(kind, std::string_view(bytes).substr(0, size))) << size;
    }
}

TEST_F(ValuePersistence, RefusesToNestWithoutEnd) {
    stdx::ustring text;
    for (int i = 0; i != 100'000; ++i) text += u"{\"#\",e5027caf-0242-4b89-be79-8b90d7684436,";
    EXPECT_THROW(value_of(text.c_str()), ListStreamException);
}

} // namespace
