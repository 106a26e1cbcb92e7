// The enumerations of the library, against what they are known to hold.
#include <core/component/Utf8.h>
#include <core/concurrency/Thread.h>
#include <core/streams/ListStreamException.h>
#include <core/text/Characters.h>
#include <core/values/ContextException.h>
#include <core/values/Enumerations.h>
#include <core/values/IContext.h>
#include <core/values/IValueCollection.h>
#include <core/values/TypedValue.h>
#include <core/values/ValueIsFilled.h>

#include "support/MessageLanguage.h"
#include "support/ProcessTest.h"

#include <climits>
#include <set>
#include <string>

namespace {

using namespace core;
using namespace stdx::literals;

struct Declared {
    const char16_t *english, *russian;
    int count;
};
constexpr Declared kDeclared[] = {
    {u"Key", u"Клавиша", 67},
    {u"ControlBorderType", u"ТипРамкиЭлементаУправления", 9},
    {u"BorderType", u"ВидРамки", 2},
    {u"ColorType", u"ВидЦвета", 5},
    {u"FontType", u"ВидШрифта", 4},
    {u"FillChecking", u"ПроверкаЗаполнения", 2},
    {u"TextEncoding", u"КодировкаТекста", 5},
    {u"StandardBeginningDateVariant", u"ВариантСтандартнойДатыНачала", 22},
    {u"SortDirection", u"НаправлениеСортировки", 2},
    {u"UUIDVersion", u"ВерсияУникальногоИдентификатора", 4},
    {u"DateFractions", u"ЧастиДаты", 3},
    {u"PictureType", u"ВидКартинки", 3},
    {u"SearchDirection", u"НаправлениеПоиска", 2},
    {u"RoundMode", u"РежимОкругления", 2},
    {u"AllowedLength", u"ДопустимаяДлина", 2},
    {u"AllowedSign", u"ДопустимыйЗнак", 2},
    {u"PictureSize", u"РазмерКартинки", 8},
    {u"PictureFormat", u"ФорматКартинки", 10},
    {u"PlatformType", u"ТипПлатформы", 17},
    {u"TextPositionRelativeToPicture", u"ПоложениеТекстаОтносительноКартинки", 6},
    {u"RepresentableDocumentBatchFileType", u"ТипФайлаПакетаОтображаемыхДокументов", 8},
    {u"ErrorCategory", u"КатегорияОшибки", 26},
    {u"HorizontalAlign", u"ГоризонтальноеПоложение", 5},
    {u"VerticalAlign", u"ВертикальноеПоложение", 3},
    {u"PageOrientation", u"ОриентацияСтраницы", 2},
    {u"UseOutput", u"ИспользованиеВывода", 3},
    {u"PrintDialogUseMode", u"РежимИспользованияДиалогаПечати", 2},
    {u"SizeChangeMode", u"РежимИзмененияРазмера", 2},
    {u"DuplexPrintingType", u"ТипДвустороннейПечати", 4},
    {u"PagePlacementAlternation", u"ЧередованиеРасположенияСтраниц", 4},
    {u"MainClientApplicationWindowMode", u"РежимОсновногоОкнаКлиентскогоПриложения", 5},
    {u"FileDragMode", u"СпособПеретаскиванияФайлов", 2},
    {u"ColorDepth", u"ГлубинаЦвета", 5},
    {u"TextDirection", u"НаправлениеТекста", 2},
    {u"StandardPeriodVariant", u"ВариантСтандартногоПериода", 49},
};

struct Item {
    const char16_t* enumeration;
    int position;
    const char16_t *english, *russian;
    int value;
};
// Two rows or more of each: the first, those that stand out of the order of numbers, the last.
constexpr Item kItems[] = {
    {u"Key", 0, u"None", u"Нет", 0},
    {u"Key", 1, u"BackSpace", u"BackSpace", 8},
    {u"Key", 2, u"Space", u"Space", 32},
    {u"Key", 3, u"_0", u"_0", 48},
    {u"Key", 12, u"_9", u"_9", 57},
    {u"Key", 13, u"A", u"A", 65},
    {u"Key", 38, u"Z", u"Z", 90},
    {u"Key", 39, u"Num0", u"Num0", 96},
    {u"Key", 48, u"Num9", u"Num9", 105},
    {u"Key", 49, u"NumMultiply", u"NumMultiply", 106},
    {u"Key", 50, u"NumAdd", u"NumAdd", 107},
    {u"Key", 51, u"NumSubtract", u"NumSubtract", 109},
    {u"Key", 52, u"NumDecimal", u"NumDecimal", 110},
    {u"Key", 53, u"NumDivide", u"NumDivide", 111},
    {u"Key", 54, u"F1", u"F1", 112},
    {u"Key", 65, u"F12", u"F12", 123},
    {u"Key", 66, u"Break", u"Break", 3},
    {u"ControlBorderType", 0, u"WithoutBorder", u"БезРамки", 0},
    {u"ControlBorderType", 1, u"Double", u"Двойная", 200},
    {u"ControlBorderType", 2, u"Single", u"Одинарная", 1},
    {u"ControlBorderType", 8, u"Overline", u"ЧертаСверху", 7},
    {u"BorderType", 0, u"Absolute", u"Абсолютная", 0},
    {u"BorderType", 1, u"StyleItem", u"ЭлементСтиля", 1},
    {u"ColorType", 0, u"Absolute", u"Абсолютный", 0},
    {u"ColorType", 1, u"StyleItem", u"ЭлементСтиля", 3},
    {u"ColorType", 2, u"WebColor", u"WebЦвет", 2},
    {u"ColorType", 3, u"WindowsColor", u"WindowsЦвет", 1},
    {u"ColorType", 4, u"AutoColor", u"АвтоЦвет", 4},
    {u"FontType", 1, u"StyleItem", u"ЭлементСтиля", 2},
    {u"FontType", 2, u"WindowsFont", u"WindowsШрифт", 1},
    {u"FontType", 3, u"AutoFont", u"АвтоШрифт", 3},
    {u"FillChecking", 0, u"DontCheck", u"НеПроверять", 0},
    {u"FillChecking", 1, u"ShowError", u"ВыдаватьОшибку", 1},
    {u"TextEncoding", 0, u"UTF16", u"UTF16", 1},
    {u"TextEncoding", 3, u"OEM", u"OEM", 8},
    {u"TextEncoding", 4, u"System", u"Системная", 16},
    {u"StandardBeginningDateVariant", 0, u"Custom", u"ПроизвольнаяДата", 0},
    {u"StandardBeginningDateVariant", 10, u"BeginningOfLastTenDays", u"НачалоПрошлойДекады", 10},
    {u"StandardBeginningDateVariant", 21, u"BeginningOfNextYear", u"НачалоСледующегоГода", 21},
    {u"SortDirection", 0, u"Asc", u"Возр", 0},
    {u"SortDirection", 1, u"Desc", u"Убыв", 1},
    {u"UUIDVersion", 0, u"Version1", u"Версия1", 0},
    {u"UUIDVersion", 1, u"Version3", u"Версия3", 1},
    {u"UUIDVersion", 3, u"Version5", u"Версия5", 3},
    {u"DateFractions", 0, u"Date", u"Дата", 1},
    {u"DateFractions", 2, u"DateTime", u"ДатаВремя", 3},
    {u"PictureType", 0, u"Empty", u"Пустая", 0},
    {u"PictureType", 1, u"FromLib", u"ИзБиблиотеки", 1},
    {u"PictureType", 2, u"Absolute", u"Абсолютная", 3},
    {u"SearchDirection", 0, u"FromBegin", u"СНачала", 0},
    {u"SearchDirection", 1, u"FromEnd", u"СКонца", 1},
    {u"RoundMode", 0, u"Round15as10", u"Окр15как10", 0},
    {u"RoundMode", 1, u"Round15as20", u"Окр15как20", 1},
    {u"AllowedLength", 0, u"Fixed", u"Фиксированная", 0},
    {u"AllowedLength", 1, u"Variable", u"Переменная", 1},
    {u"AllowedSign", 0, u"Any", u"Любой", 0},
    {u"AllowedSign", 1, u"Nonnegative", u"Неотрицательный", 1},
    {u"PictureSize", 0, u"RealSize", u"РеальныйРазмер", 0},
    {u"PictureSize", 5, u"RealSizeIgnoreScale", u"РеальныйРазмерБезУчетаМасштаба", 5},
    {u"PictureSize", 7, u"ByFontSize", u"ПоРазмеруШрифта", 7},
    {u"PictureFormat", 0, u"UnknownFormat", u"НеизвестныйФормат", 0},
    {u"PictureFormat", 3, u"Icon", u"Icon", 3},
    {u"PictureFormat", 9, u"SVG", u"SVG", 9},
    {u"PlatformType", 0, u"Windows_x86", u"Windows_x86", 0},
    {u"PlatformType", 7, u"Android_ARM_64", u"Android_ARM_64", 7},
    {u"PlatformType", 16, u"Linux_E2K", u"Linux_E2K", 16},
    {u"TextPositionRelativeToPicture", 0, u"Left", u"Слева", 0},
    {u"TextPositionRelativeToPicture", 4, u"OnTop", u"Поверх", 4},
    {u"TextPositionRelativeToPicture", 5, u"Auto", u"Авто", 5},
    {u"RepresentableDocumentBatchFileType", 0, u"DOCX", u"DOCX", 0},
    {u"RepresentableDocumentBatchFileType", 7, u"XLSX", u"XLSX", 7},
    {u"ErrorCategory", 0, u"AccessViolation", u"НарушениеПравДоступа", 0},
    {u"ErrorCategory", 23, u"SpeechProcessingError", u"ОшибкаРаботыСРечью", 23},
    {u"ErrorCategory", 24, u"OtherError", u"ПрочаяОшибка", 25},
    {u"ErrorCategory", 25, u"AllErrors", u"ВсеОшибки", 26},
    {u"HorizontalAlign", 0, u"Left", u"Лево", 0},
    {u"HorizontalAlign", 3, u"Justify", u"ПоШирине", 3},
    {u"HorizontalAlign", 4, u"Auto", u"Авто", 4},
    {u"VerticalAlign", 0, u"Top", u"Верх", 0},
    {u"VerticalAlign", 2, u"Bottom", u"Низ", 2},
    {u"PageOrientation", 0, u"Portrait", u"Портрет", 0},
    {u"PageOrientation", 1, u"Landscape", u"Ландшафт", 1},
    {u"UseOutput", 0, u"Auto", u"Авто", 0},
    {u"UseOutput", 2, u"Disable", u"Запретить", 2},
    {u"PrintDialogUseMode", 0, u"Use", u"Использовать", 0},
    {u"PrintDialogUseMode", 1, u"DontUse", u"НеИспользовать", 1},
    {u"SizeChangeMode", 0, u"Normal", u"Обычный", 0},
    {u"SizeChangeMode", 1, u"QuickChange", u"БыстроеИзменение", 1},
    {u"DuplexPrintingType", 0, u"None", u"Нет", 1},
    {u"DuplexPrintingType", 3, u"UsePrinterSettings", u"ИспользоватьНастройкиПринтера", 4},
    {u"PagePlacementAlternation", 0, u"Auto", u"Авто", 0},
    {u"PagePlacementAlternation", 3, u"MirrorOnTop", u"ЗеркальноСверху", 3},
    {u"MainClientApplicationWindowMode", 1, u"Workplace", u"РабочееМесто", 1},
    {u"MainClientApplicationWindowMode", 2, u"EmbeddedWorkplace", u"ВстроенноеРабочееМесто", 4},
    {u"MainClientApplicationWindowMode", 3, u"FullscreenWorkplace", u"ПолноэкранноеРабочееМесто",
     2},
    {u"MainClientApplicationWindowMode", 4, u"Kiosk", u"Киоск", 3},
    {u"FileDragMode", 0, u"AsFile", u"КакФайл", 0},
    {u"FileDragMode", 1, u"AsFileRef", u"КакСсылкаНаФайл", 1},
    {u"ColorDepth", 0, u"BitPerPixel1", u"БитНаПиксел1", 1},
    {u"ColorDepth", 3, u"BitPerPixel24", u"БитНаПиксел24", 24},
    {u"ColorDepth", 4, u"BitPerPixel32", u"БитНаПиксел32", 32},
    {u"TextDirection", 0, u"LeftToRight", u"СлеваНаправо", 0},
    {u"TextDirection", 1, u"RightToLeft", u"СправаНалево", 1},
    {u"StandardPeriodVariant", 0, u"Custom", u"ПроизвольныйПериод", 0},
    {u"StandardPeriodVariant", 14, u"Yesterday", u"Вчера", 14},
    {u"StandardPeriodVariant", 22, u"LastTenDaysTillSameDayNumber",
     u"ПрошлаяДекадаДоТакогоЖеНомераДня", 22},
    {u"StandardPeriodVariant", 27, u"Tomorrow", u"Завтра", 27},
    {u"StandardPeriodVariant", 40, u"TillEndOfThisWeek", u"ДоКонцаЭтойНедели", 40},
    {u"StandardPeriodVariant", 46, u"Last7Days", u"Последние7Дней", 46},
    {u"StandardPeriodVariant", 48, u"Month", u"Месяц", 48},
};

std::string utf8(std::u16string_view text) {
    return std::string(to_utf8(text));
}

InterfacePtr<IContext_> context_of(const char16_t* name) {
    return InterfacePtr<IContext_>(enumeration(name));
}

Value item(IContext_& factory, int position) {
    Value value;
    EXPECT_TRUE(factory.getPropVal(position, value)) << position;
    return value;
}

Value item(const char16_t* enumeration, const char16_t* name) {
    const auto factory = context_of(enumeration);
    return item(*factory, factory->findProp(name));
}

int integer(const Value& value) {
    return *static_cast<const std::int32_t*>(value.lentIValue()->getDataPtr());
}

stdx::ustring stored(const Value& value) {
    stdx::ustring text;
    value.toString(text);
    return text;
}

Value read(const stdx::ustring& text) {
    Value value = u"as it was";
    GenericValue::fromString(text, value);
    return value;
}

stdx::ustring shown(const Value& value, const char16_t* language) {
    const test::MessageLanguage messages(language);
    return to_string(value);
}

class Enumerations : public test::ProcessTest {};

TEST_F(Enumerations, AreAllThatTheProcessKnows) {
    std::set<stdx::ustring> names;
    for (const _GUID& type : process().getClassesOfCategory(CATID_EnumValType))
        if (process().getClassComponent(type) == "orbcore"_s)
            names.insert(process().getClassAliases(type).front());
    std::set<stdx::ustring> declared;
    for (const Declared& row : kDeclared) declared.insert(row.english);
    EXPECT_EQ(declared.size(), 35u);
    EXPECT_EQ(names, declared);
    for (const char16_t* name : {u"EnumKey", u"Клавиш", u"Number", u""})
        EXPECT_FALSE(enumeration(name)) << utf8(name);
}

TEST_F(Enumerations, HoldTheirValuesInTheOrderOfScripts) {
    for (const Item& row : kItems) {
        SCOPED_TRACE(testing::Message() << utf8(row.enumeration) << '.' << utf8(row.english));
        const auto factory = context_of(row.enumeration);
        EXPECT_EQ(stdx::ustring(factory->getPropName(row.position, 0)), row.english);
        EXPECT_EQ(stdx::ustring(factory->getPropName(row.position, 1)), row.russian);
        EXPECT_EQ(integer(item(*factory, row.position)), row.value);
    }
}

// What every factory promises of every row.
void expect_sound(IContext_& factory, int position) {
    const Value value = item(factory, position);
    for (int language = 0; language != 2; ++language) {
        const stdx::ustring name = factory.getPropName(position, language);
        const char16_t *const begin = name.c_str(), *const end = begin + name.size();
        for (const stdx::ustring& spelled : {name, to_lower(begin, end), to_upper(begin, end)})
            EXPECT_EQ(factory.findProp(spelled), position);
    }
    EXPECT_EQ(factory.getPropName(position, 2), nullptr);
    EXPECT_TRUE(factory.isPropReadable(position));
    EXPECT_FALSE(factory.isPropWritable(position));
    EXPECT_FALSE(factory.setPropVal(position, value));

    InterfacePtr<IEnumValFactory> values(static_cast<IUnknown*>(&factory));
    IValue* const object = value.lentIValue();
    EXPECT_EQ(values->getValue(integer(value)).lentIValue(), object) << "of another row";
    EXPECT_EQ(read(stored(value)).lentIValue(), object);
    EXPECT_EQ(InterfacePtr<IValue>(value.object<ICloneableObject>()->clone()), object);
    EXPECT_EQ(value.hashCode0(), static_cast<std::uint32_t>(integer(value)));
    EXPECT_FALSE(value.object<ICheckDefaultValue>()->isDefaultValue());
    EXPECT_TRUE(value_is_filled(value));
}

TEST_F(Enumerations, GiveOneObjectForEachValueByEveryWay) {
    for (const Declared& row : kDeclared) {
        SCOPED_TRACE(utf8(row.english));
        const auto factory = context_of(row.russian);
        ASSERT_TRUE(factory);
        ASSERT_EQ(factory, context_of(row.english));
        ASSERT_EQ(factory->getNProps(), row.count);
        EXPECT_EQ(factory->getNMethods(), 0);
        EXPECT_EQ(factory->getIContextDef(), nullptr);
        EXPECT_EQ(factory->findProp(u"NoSuchName"), -1);
        EXPECT_EQ(InterfacePtr<IContext_>(InterfacePtr<ICloneableObject>(factory)->clone()),
                  factory);

        std::vector<Value> all = {Value(1)};
        const InterfacePtr<IEnumValFactory> values(factory);
        values->getValues(all);
        ASSERT_EQ(all.size(), static_cast<std::size_t>(row.count));
        const auto walk = InterfacePtr<IProvideEnumValue>(factory)->getEnumValue();
        for (int i = 0; i != row.count; ++i) {
            SCOPED_TRACE(utf8(factory->getPropName(i, 0)));
            expect_sound(*factory, i);
            Value next;
            EXPECT_TRUE(walk->next(next));
            EXPECT_EQ(next.lentIValue(), all[static_cast<unsigned>(i)].lentIValue());
            EXPECT_EQ(next.lentIValue(), item(*factory, i).lentIValue());
        }
        Value last = u"untouched";
        EXPECT_FALSE(walk->next(last));
        EXPECT_EQ(last, u"untouched");
        for (const int outside : {-1, row.count, INT_MIN, INT_MAX}) {
            EXPECT_FALSE(factory->getPropVal(outside, last));
            EXPECT_EQ(factory->getPropName(outside, 0), nullptr);
        }
    }
}

TEST_F(Enumerations, HaveATypeForTheValuesAndOneForTheFactory) {
    for (const Declared& row : kDeclared) {
        SCOPED_TRACE(utf8(row.english));
        const auto factory = context_of(row.english);
        const Type ofValues = item(*factory, 0).type();
        EXPECT_EQ(ofValues, Type(row.english));
        EXPECT_EQ(ofValues, Type(row.russian));
        EXPECT_EQ(ofValues.code(), Type::Code::Object);
        EXPECT_EQ(stdx::ustring(ofValues->getTypeString(0)), row.english);
        EXPECT_EQ(stdx::ustring(ofValues->getTypeString(1)), row.russian);
        EXPECT_EQ(item(*factory, row.count - 1).type(), ofValues);

        const Type ofFactory = Value(InterfacePtr<IValue>(factory)).type();
        const stdx::ustring english = u"Enum"_us + row.english;
        const stdx::ustring russian = u"Перечисление"_us + row.russian;
        EXPECT_EQ(ofFactory, Type(english));
        EXPECT_EQ(ofFactory, Type(russian));
        EXPECT_EQ(stdx::ustring(ofFactory->getTypeString(0)), english);
        EXPECT_EQ(stdx::ustring(ofFactory->getTypeString(1)), russian);
        EXPECT_EQ(ofFactory->createIValue(), InterfacePtr<IValue>(factory));

        for (IType* const type : {ofValues.get(), ofFactory.get()}) {
            EXPECT_FALSE(type->isValueMutable());
            for (const unsigned count : {0u, 1u, 2u}) EXPECT_FALSE(type->hasCtor(count));
            EXPECT_FALSE(type->ctor({}));
        }
    }
}

TEST_F(Enumerations, AreDescribedByTheTypesOfTheirFactories) {
    for (const Declared& row : kDeclared) {
        SCOPED_TRACE(utf8(row.english));
        const auto factory = context_of(row.english);
        const InterfacePtr<IContextDef> type(Type(u"Enum"_us + row.english).get());
        ASSERT_EQ(type->getNProps(), row.count);
        EXPECT_EQ(type->getNMethods(), 0);
        for (int i = 0; i != row.count; ++i) {
            EXPECT_EQ(type->getPropName(i, 1), factory->getPropName(i, 1));
            EXPECT_EQ(type->findProp(factory->getPropName(i, 0)), i);
            EXPECT_TRUE(type->isPropReadable(i));
            EXPECT_FALSE(type->isPropWritable(i));
        }
        const InterfacePtr<IContextDefExt> extended(type);
        ContextValueInfo info;
        ASSERT_TRUE(extended->getPropInfo(row.count - 1, info));
        EXPECT_EQ(info.name, factory->getPropName(row.count - 1, 0));
        EXPECT_TRUE(info.types == Type(row.english).clsid());
        EXPECT_FALSE(info.typesUnknown);
        EXPECT_FALSE(extended->getPropInfo(row.count, info));
        EXPECT_FALSE(extended->isCollection());
    }
}

TEST_F(Enumerations, GiveADefaultValueWhereZeroIsOne) {
    const struct {
        const char16_t *enumeration, *first; // what the factory gives
        bool zero;
    } rows[] = {
        {u"HorizontalAlign", u"Left", true},     {u"FillChecking", u"DontCheck", true},
        {u"TextEncoding", u"UTF16", false},      {u"DateFractions", u"Date", false},
        {u"DuplexPrintingType", u"None", false}, {u"ColorDepth", u"BitPerPixel1", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(utf8(row.enumeration));
        const Value first = item(row.enumeration, row.first);
        EXPECT_EQ(enumeration(row.enumeration)->getDefaultValue().lentIValue(), first.lentIValue());
        const Value made(Type(row.enumeration)->createIValue());
        EXPECT_EQ(made, row.zero ? first : Value());
        const TypedValue cell{TypeDomain(Type(row.enumeration).clsid())};
        EXPECT_EQ(cell, made);
    }
}

TEST_F(Enumerations, AreDifferentWhereOnlyTheIntegersAreEqual) {
    const Value left = item(u"HorizontalAlign", u"Left"), top = item(u"VerticalAlign", u"Top");
    EXPECT_EQ(integer(left), integer(top));
    EXPECT_NE(left, top);
    EXPECT_NE(left, item(u"HorizontalAlign", u"Right"));
    EXPECT_NE(left, Value(0));
    EXPECT_NE(Value(0), left);
    EXPECT_NE(left, Value());
    EXPECT_EQ(left, item(u"ГоризонтальноеПоложение", u"лево"));
}

TEST_F(Enumerations, ReadWhatIsNoneOfTheirIntegersAsUndefined) {
    const Value two = item(u"ControlBorderType", u"Двойная");
    const stdx::ustring text = stored(two);
    const unsigned at = text.find(u"200");
    ASSERT_NE(at, text.npos);
    for (const char16_t* other : {u"8", u"-1", u"201", u"2147483647", u"-2147483648"}) {
        stdx::ustring changed = text;
        changed.replace(at, 3, std::u16string_view(other));
        EXPECT_TRUE(is_undefined_value(read(changed))) << utf8(changed);
    }
    for (const char16_t* wrong : {u"\"x\"", u"", u"{}"}) {
        stdx::ustring changed = text;
        changed.replace(at, 3, std::u16string_view(wrong));
        EXPECT_THROW(read(changed), ListStreamException) << utf8(changed);
    }
}

TEST_F(Enumerations, AreShownInTheLanguageOfMessages) {
    const struct {
        Value value;
        const char16_t *english, *russian;
    } rows[] = {
        {enum_value(EnumValuesBorderType::WithoutBorder), u"Without border", u"Без рамки"},
        {enum_value(EnumValuesHAlign::Left), u"Left", u"Лево"},
        {enum_value(FillCheckEnum::DontCheck), u"Do not check", u"Не проверять"},
        {enum_value(EnumValuesStandardPeriodVariant::Last7Days), u"Last 7 days",
         u"Последние 7 дней"},
        {enum_value(ValuesExceptionCategory::NetworkError), u"Network error", u"Ошибка сети"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(shown(row.value, u"en"), row.english);
        EXPECT_EQ(shown(row.value, u"ru"), row.russian);
    }
    for (const Declared& row : kDeclared)
        for (const char16_t* language : {u"en", u"ru"}) {
            std::set<stdx::ustring> texts;
            const auto factory = context_of(row.english);
            for (int i = 0; i != row.count; ++i) texts.insert(shown(item(*factory, i), language));
            EXPECT_FALSE(texts.contains(u""_us)) << utf8(row.english);
            EXPECT_EQ(texts.size(), static_cast<std::size_t>(row.count)) << utf8(row.english);
        }
}

TEST_F(Enumerations, WithoutTextsAreShownByTheNameInTheLanguageOfTheProcess) {
    const struct {
        int language;
        const char16_t *none, *platform; // the key "None", a platform, which has no Russian name
    } rows[] = {{0, u"None", u"Linux_E2K"}, {1, u"Нет", u"Linux_E2K"}, {2, u"", u""}};
    const test::MessageLanguage russian(u"ru");
    for (const auto& row : rows) {
        process().setTermLanguage(row.language);
        EXPECT_EQ(to_string(enum_value(EnumValuesKey::None)), row.none) << row.language;
        EXPECT_EQ(to_string(enum_value(OrbPlatformType::Linux_E2K)), row.platform) << row.language;
    }
}

TEST_F(Enumerations, AreNativeValuesToCode) {
    EXPECT_EQ(to_enum<EnumValuesBorderType>(item(u"ControlBorderType", u"double")),
              EnumValuesBorderType::Double);
    EXPECT_EQ(to_enum<NumericRoundMode>(enum_value(NumericRoundMode::HalfUp)),
              NumericRoundMode::HalfUp);
    EXPECT_EQ(enum_value(static_cast<EnumValuesVAlign>(17)), Value());

    Value top = enum_value(EnumValuesVAlign::Top), number = 0;
    EXPECT_EQ(to_enum<EnumValuesVAlign>({&number, &top}, 1), EnumValuesVAlign::Top);
    for (const Value& wrong : {Value(), number, enum_value(EnumValuesHAlign::Left)})
        EXPECT_THROW(to_enum<EnumValuesVAlign>(wrong), ContextException);
    EXPECT_THROW(to_enum<EnumValuesVAlign>({&number, &top}, 0), ContextException);
}

TEST(EnumerationsWithoutAProcess, AreUndefined) {
    EXPECT_EQ(enum_value(EnumValuesVAlign::Top), Value());
    EXPECT_FALSE(enumeration(u"VerticalAlign"));
}

TEST_F(Enumerations, AreMadeOnceByThreadsThatRace) {
    constexpr int kThreads = 4;
    std::vector<InterfacePtr<IValue>> found(kThreads * std::size(kDeclared));
    const auto work = [&](int thread) {
        for (std::size_t i = 0; i != std::size(kDeclared); ++i) {
            const auto factory = context_of(kDeclared[i].english);
            const Value value = item(*factory, kDeclared[i].count - 1);
            EXPECT_EQ(value.type(), Type(kDeclared[i].russian));
            EXPECT_FALSE(to_string(value).empty());
            found[static_cast<std::size_t>(thread) * std::size(kDeclared) + i] = value.getIValue();
        }
    };
    std::vector<InterfacePtr<Thread>> threads;
    for (int i = 0; i != kThreads; ++i) threads.push_back(create_thread([&, i] { work(i); }));
    for (const auto& thread : threads) thread->start();
    for (const auto& thread : threads) thread->join();
    for (std::size_t i = 0; i != found.size(); ++i)
        EXPECT_EQ(found[i], found[i % std::size(kDeclared)]);
}

} // namespace
