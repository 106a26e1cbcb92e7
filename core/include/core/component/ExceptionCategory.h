// What an exception says about its origin: a set of categories, of which bit n is the value n. A
// script knows them as the enumeration "ErrorCategory", "КатегорияОшибки".
#pragma once

#include <cstdint>

namespace core {

// 24 does not exist. `Other` and `All` only serve to ask: they have no bit in a set.
enum class ValuesExceptionCategory : std::uint32_t {
    AccessViolation = 0,
    LocalFileAccessError = 1,
    NetworkError = 2,
    PrinterError = 3,
    ScriptCompileError = 4,
    ScriptRuntimeError = 5,
    ScriptUseError = 6,
    ExceptionRaisedFromScript = 7,
    CollaborationSystemError = 8,
    DataCompositionSettingsError = 9,
    SessionError = 10,
    StoredDataError = 11,
    FullTextSearchError = 12,
    ExternalDataSourceError = 13,
    GotoURLError = 14,
    DatabaseCopyError = 15,
    NoPermissionToUseFunctionality = 16,
    MultimediaToolsError = 17,
    DocumentConversionError = 18,
    InvalidPassword = 19,
    SignatureVerificationError = 20,
    ConfigurationError = 21,
    DatabaseTablespaceError = 22,
    SpeechProcessingError = 23,
    OtherError = 25,
    AllErrors = 26,
};

inline constexpr unsigned kExceptionCategories = 24;

struct ExceptionCategoryRow {
    ValuesExceptionCategory value;
    const char16_t* names[2]; // English, Russian
    const char* key;          // of the message that presents it
};

// In the order in which a script sees them.
inline constexpr ExceptionCategoryRow kExceptionCategoryRows[] = {
    {ValuesExceptionCategory::AccessViolation,
     {u"AccessViolation", u"НарушениеПравДоступа"},
     "IDS_ENUM_EXCEPTIONCATEGORY_ACCESS"},
    {ValuesExceptionCategory::LocalFileAccessError,
     {u"LocalFileAccessError", u"ОшибкаДоступаКЛокальномуФайлу"},
     "IDS_ENUM_EXCEPTIONCATEGORY_LOCALFILE"},
    {ValuesExceptionCategory::NetworkError,
     {u"NetworkError", u"ОшибкаСети"},
     "IDS_ENUM_EXCEPTIONCATEGORY_INET"},
    {ValuesExceptionCategory::PrinterError,
     {u"PrinterError", u"ОшибкаРаботыСПринтером"},
     "IDS_ENUM_EXCEPTIONCATEGORY_PRINTER"},
    {ValuesExceptionCategory::ScriptCompileError,
     {u"ScriptCompileError", u"ОшибкаКомпиляцииВстроенногоЯзыка"},
     "IDS_ENUM_EXCEPTIONCATEGORY_BSLCOMPILE"},
    {ValuesExceptionCategory::ScriptRuntimeError,
     {u"ScriptRuntimeError", u"ОшибкаВоВремяВыполненияВстроенногоЯзыка"},
     "IDS_ENUM_EXCEPTIONCATEGORY_BSLRUNTIME"},
    {ValuesExceptionCategory::ScriptUseError,
     {u"ScriptUseError", u"ОшибкаИспользованияВстроенногоЯзыка"},
     "IDS_ENUM_EXCEPTIONCATEGORY_BSLUSAGE"},
    {ValuesExceptionCategory::ExceptionRaisedFromScript,
     {u"ExceptionRaisedFromScript", u"ИсключениеВызванноеИзВстроенногоЯзыка"},
     "IDS_ENUM_EXCEPTIONCATEGORY_APPLICATION"},
    {ValuesExceptionCategory::CollaborationSystemError,
     {u"CollaborationSystemError", u"ОшибкаСистемыВзаимодействия"},
     "IDS_ENUM_EXCEPTIONCATEGORY_ECS"},
    {ValuesExceptionCategory::DataCompositionSettingsError,
     {u"DataCompositionSettingsError", u"ОшибкаНастроекКомпоновкиДанных"},
     "IDS_ENUM_EXCEPTIONCATEGORY_DCS"},
    {ValuesExceptionCategory::SessionError,
     {u"SessionError", u"ОшибкаСеанса"},
     "IDS_ENUM_EXCEPTIONCATEGORY_SEANCE"},
    {ValuesExceptionCategory::StoredDataError,
     {u"StoredDataError", u"ОшибкаХранимыхДанных"},
     "IDS_ENUM_EXCEPTIONCATEGORY_DBDATA"},
    {ValuesExceptionCategory::FullTextSearchError,
     {u"FullTextSearchError", u"ОшибкаПолнотекстовогоПоиска"},
     "IDS_ENUM_EXCEPTIONCATEGORY_FTEXTSEARCH"},
    {ValuesExceptionCategory::ExternalDataSourceError,
     {u"ExternalDataSourceError", u"ОшибкаВнешнегоИсточникаДанных"},
     "IDS_ENUM_EXCEPTIONCATEGORY_EXTERNALDATASOURCE"},
    {ValuesExceptionCategory::GotoURLError,
     {u"GotoURLError", u"ОшибкаПереходаПоНавигационнойСсылке"},
     "IDS_ENUM_EXCEPTIONCATEGORY_NAVIGATOR"},
    {ValuesExceptionCategory::DatabaseCopyError,
     {u"DatabaseCopyError", u"ОшибкаКопииБазыДанных"},
     "IDS_ENUM_EXCEPTIONCATEGORY_DBCOPIES"},
    {ValuesExceptionCategory::NoPermissionToUseFunctionality,
     {u"NoPermissionToUseFunctionality", u"ОтсутствиеРазрешенияДляИспользованияФункциональности"},
     "IDS_ENUM_EXCEPTIONCATEGORY_OSPERMISSIONDENIED"},
    {ValuesExceptionCategory::MultimediaToolsError,
     {u"MultimediaToolsError", u"ОшибкаСредствМультимедиа"},
     "IDS_ENUM_EXCEPTIONCATEGORY_MULTIMEDIAERROR"},
    {ValuesExceptionCategory::DocumentConversionError,
     {u"DocumentConversionError", u"ОшибкаПреобразованияДокумента"},
     "IDS_ENUM_EXCEPTIONCATEGORY_DOCUMENT_CONVERSION"},
    {ValuesExceptionCategory::InvalidPassword,
     {u"InvalidPassword", u"НеправильныйПароль"},
     "IDS_ENUM_EXCEPTIONCATEGORY_INVALID_PASSWORD"},
    {ValuesExceptionCategory::SignatureVerificationError,
     {u"SignatureVerificationError", u"ОшибкаПроверкиПодписи"},
     "IDS_ENUM_EXCEPTIONCATEGORY_SIGNATURE_VERIFICATION_ERROR"},
    {ValuesExceptionCategory::ConfigurationError,
     {u"ConfigurationError", u"ОшибкаКонфигурации"},
     "IDS_ENUM_EXCEPTIONCATEGORY_CONFIGURATION"},
    {ValuesExceptionCategory::DatabaseTablespaceError,
     {u"DatabaseTablespaceError", u"ОшибкаТабличногоПространстваБазыДанных"},
     "IDS_ENUM_EXCEPTIONCATEGORY_DBSEGMENTS"},
    {ValuesExceptionCategory::SpeechProcessingError,
     {u"SpeechProcessingError", u"ОшибкаРаботыСРечью"},
     "IDS_ENUM_EXCEPTIONCATEGORY_SPEECH"},
    {ValuesExceptionCategory::OtherError,
     {u"OtherError", u"ПрочаяОшибка"},
     "IDS_ENUM_EXCEPTIONCATEGORY_OTHER"},
    {ValuesExceptionCategory::AllErrors,
     {u"AllErrors", u"ВсеОшибки"},
     "IDS_ENUM_EXCEPTIONCATEGORY_ALL"},
};

} // namespace core
