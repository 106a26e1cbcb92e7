// The locales that there are, as data. Sorted by name without regard to case, as both searches
// want it; the assertions at the end hold that. Countries that a page serves in part go by what
// their systems were sold with: English, for one, has page 437 but for the countries of page 850.
#pragma once

#include <core/locale/Locale.h>

#include <algorithm>
#include <iterator>

namespace core {

struct CodePages {
    const char16_t* windows;
    const char16_t* oem;
};

inline constexpr CodePages kNone = {nullptr, nullptr};
inline constexpr CodePages kWestern = {u"cp-1252", u"cp-850"};
inline constexpr CodePages kAmerican = {u"cp-1252", u"cp-437"};
inline constexpr CodePages kCentral = {u"cp-1250", u"cp-852"};
inline constexpr CodePages kBaltic = {u"cp-1257", u"cp-775"};
inline constexpr CodePages kTurkish = {u"cp-1254", u"cp-857"};
inline constexpr CodePages kCyrillic = {u"cp-1251", u"cp-866"};
inline constexpr CodePages kSerbian = {u"cp-1251", u"cp-855"};
inline constexpr CodePages kGreek = {u"cp-1253", u"cp-737"};
inline constexpr CodePages kHebrew = {u"cp-1255", u"cp-862"};
inline constexpr CodePages kArabic = {u"cp-1256", u"cp-720"};
inline constexpr CodePages kThai = {u"cp-874", u"cp-874"};
inline constexpr CodePages kVietnamese = {u"cp-1258", u"cp-1258"};
inline constexpr CodePages kJapanese = {u"cp-932", u"cp-932"};
inline constexpr CodePages kKorean = {u"cp-949", u"cp-949"};
inline constexpr CodePages kSimplified = {u"cp-936", u"cp-936"};
inline constexpr CodePages kTraditional = {u"cp-950", u"cp-950"};

#define ROW(key, pages)                                                                            \
    { u"" key, key, pages.windows, pages.oem }

// A language a line.
// clang-format off
inline constexpr LocaleRow kLocaleRows[] = {
    ROW("af", kWestern), ROW("af_NA", kWestern), ROW("af_ZA", kWestern),
    ROW("am", kNone), ROW("am_ET", kNone),
    ROW("ar", kArabic), ROW("ar_AE", kArabic), ROW("ar_BH", kArabic), ROW("ar_DZ", kArabic),
    ROW("ar_EG", kArabic), ROW("ar_IQ", kArabic), ROW("ar_JO", kArabic), ROW("ar_KW", kArabic),
    ROW("ar_LB", kArabic), ROW("ar_LY", kArabic), ROW("ar_MA", kArabic), ROW("ar_OM", kArabic),
    ROW("ar_QA", kArabic), ROW("ar_SA", kArabic), ROW("ar_SD", kArabic), ROW("ar_SY", kArabic),
    ROW("ar_TN", kArabic), ROW("ar_YE", kArabic),
    ROW("as", kNone), ROW("as_IN", kNone),
    ROW("az", kTurkish), ROW("az_AZ", kTurkish), ROW("az_Cyrl", kCyrillic),
    ROW("az_Cyrl_AZ", kCyrillic), ROW("az_Latn", kTurkish), ROW("az_Latn_AZ", kTurkish),
    ROW("be", kCyrillic), ROW("be_BY", kCyrillic),
    ROW("bg", kCyrillic), ROW("bg_BG", kCyrillic),
    ROW("bn", kNone), ROW("bn_IN", kNone),
    ROW("ca", kWestern), ROW("ca_ES", kWestern),
    ROW("cs", kCentral), ROW("cs_CZ", kCentral),
    ROW("cy", kNone), ROW("cy_GB", kNone),
    ROW("da", kWestern), ROW("da_DK", kWestern),
    ROW("de", kWestern), ROW("de_AT", kWestern), ROW("de_BE", kWestern), ROW("de_CH", kWestern),
    ROW("de_DE", kWestern), ROW("de_LI", kWestern), ROW("de_LU", kWestern),
    ROW("el", kGreek), ROW("el_CY", kGreek), ROW("el_GR", kGreek),
    ROW("en", kAmerican), ROW("en_AU", kWestern), ROW("en_BE", kAmerican), ROW("en_BW", kAmerican),
    ROW("en_BZ", kAmerican), ROW("en_CA", kWestern), ROW("en_GB", kWestern),
    ROW("en_HK", kAmerican), ROW("en_IE", kWestern), ROW("en_IN", kAmerican),
    ROW("en_JM", kWestern), ROW("en_MH", kAmerican), ROW("en_MT", kAmerican),
    ROW("en_NA", kAmerican), ROW("en_NZ", kWestern), ROW("en_PH", kAmerican),
    ROW("en_PK", kAmerican), ROW("en_SG", kAmerican), ROW("en_TT", kAmerican),
    ROW("en_US", kAmerican), ROW("en_US_POSIX", kAmerican), ROW("en_VI", kAmerican),
    ROW("en_ZA", kAmerican), ROW("en_ZW", kAmerican),
    ROW("es", kWestern), ROW("es_AR", kWestern), ROW("es_BO", kWestern), ROW("es_CL", kWestern),
    ROW("es_CO", kWestern), ROW("es_CR", kWestern), ROW("es_DO", kWestern), ROW("es_EC", kWestern),
    ROW("es_ES", kWestern), ROW("es_GT", kWestern), ROW("es_HN", kWestern), ROW("es_MX", kWestern),
    ROW("es_NI", kWestern), ROW("es_PA", kWestern), ROW("es_PE", kWestern), ROW("es_PR", kWestern),
    ROW("es_PY", kWestern), ROW("es_SV", kWestern), ROW("es_US", kWestern), ROW("es_UY", kWestern),
    ROW("es_VE", kWestern),
    ROW("et", kBaltic), ROW("et_EE", kBaltic),
    ROW("eu", kWestern), ROW("eu_ES", kWestern),
    ROW("fa", kArabic), ROW("fa_AF", kArabic), ROW("fa_IR", kArabic),
    ROW("fi", kWestern), ROW("fi_FI", kWestern),
    ROW("fo", kWestern), ROW("fo_FO", kWestern),
    ROW("fr", kWestern), ROW("fr_BE", kWestern), ROW("fr_CA", kWestern), ROW("fr_CH", kWestern),
    ROW("fr_FR", kWestern), ROW("fr_LU", kWestern), ROW("fr_MC", kWestern), ROW("fr_SN", kWestern),
    ROW("ga", kWestern), ROW("ga_IE", kWestern),
    ROW("gl", kWestern), ROW("gl_ES", kWestern),
    ROW("gu", kNone), ROW("gu_IN", kNone),
    ROW("he", kHebrew), ROW("he_IL", kHebrew),
    ROW("hi", kNone), ROW("hi_IN", kNone),
    ROW("hr", kCentral), ROW("hr_HR", kCentral),
    ROW("hu", kCentral), ROW("hu_HU", kCentral),
    ROW("hy", kNone), ROW("hy_AM", kNone), ROW("hy_AM_REVISED", kNone),
    ROW("id", kWestern), ROW("id_ID", kWestern),
    ROW("is", kWestern), ROW("is_IS", kWestern),
    ROW("it", kWestern), ROW("it_CH", kWestern), ROW("it_IT", kWestern),
    ROW("ja", kJapanese), ROW("ja_JP", kJapanese),
    ROW("ka", kNone), ROW("ka_GE", kNone),
    ROW("kk", kCyrillic), ROW("kk_KZ", kCyrillic),
    ROW("kl", kWestern), ROW("kl_GL", kWestern),
    ROW("kn", kNone), ROW("kn_IN", kNone),
    ROW("ko", kKorean), ROW("ko_KR", kKorean),
    ROW("kok", kNone), ROW("kok_IN", kNone),
    ROW("lt", kBaltic), ROW("lt_LT", kBaltic),
    ROW("lv", kBaltic), ROW("lv_LV", kBaltic),
    ROW("mk", kCyrillic), ROW("mk_MK", kCyrillic),
    ROW("ml", kNone), ROW("ml_IN", kNone),
    ROW("mn", kCyrillic), ROW("mn_Cyrl", kCyrillic), ROW("mn_MN", kCyrillic), ROW("mn_Mong", kNone),
    ROW("mn_Mong_CN", kNone),
    ROW("mr", kNone), ROW("mr_IN", kNone),
    ROW("ms", kWestern), ROW("ms_BN", kWestern), ROW("ms_MY", kWestern),
    ROW("mt", kNone), ROW("mt_MT", kNone),
    ROW("nb", kWestern), ROW("nb_NO", kWestern),
    ROW("nl", kWestern), ROW("nl_BE", kWestern), ROW("nl_NL", kWestern),
    ROW("nn", kWestern), ROW("nn_NO", kWestern),
    ROW("om", kNone), ROW("om_ET", kNone), ROW("om_KE", kNone),
    ROW("or", kNone), ROW("or_IN", kNone),
    ROW("pa", kNone), ROW("pa_IN", kNone),
    ROW("pl", kCentral), ROW("pl_PL", kCentral),
    ROW("ps", kArabic), ROW("ps_AF", kArabic),
    ROW("pt", kWestern), ROW("pt_BR", kWestern), ROW("pt_PT", kWestern),
    ROW("ro", kCentral), ROW("ro_RO", kCentral),
    ROW("ru", kCyrillic), ROW("ru_RU", kCyrillic), ROW("ru_UA", kCyrillic),
    ROW("sk", kCentral), ROW("sk_SK", kCentral),
    ROW("sl", kCentral), ROW("sl_SI", kCentral),
    ROW("so", kNone), ROW("so_DJ", kNone), ROW("so_ET", kNone), ROW("so_KE", kNone),
    ROW("so_SO", kNone),
    ROW("sq", kCentral), ROW("sq_AL", kCentral),
    ROW("sr", kSerbian), ROW("sr_BA", kSerbian), ROW("sr_CS", kSerbian), ROW("sr_Cyrl", kSerbian),
    ROW("sr_Cyrl_BA", kSerbian), ROW("sr_Cyrl_CS", kSerbian), ROW("sr_Cyrl_ME", kSerbian),
    ROW("sr_Cyrl_RS", kSerbian), ROW("sr_Latn", kCentral), ROW("sr_Latn_BA", kCentral),
    ROW("sr_Latn_CS", kCentral), ROW("sr_Latn_ME", kCentral), ROW("sr_Latn_RS", kCentral),
    ROW("sr_ME", kSerbian), ROW("sr_RS", kSerbian),
    ROW("sv", kWestern), ROW("sv_FI", kWestern), ROW("sv_SE", kWestern),
    ROW("sw", kAmerican), ROW("sw_KE", kAmerican), ROW("sw_TZ", kAmerican),
    ROW("ta", kNone), ROW("ta_IN", kNone),
    ROW("te", kNone), ROW("te_IN", kNone),
    ROW("th", kThai), ROW("th_TH", kThai),
    ROW("ti", kNone), ROW("ti_ER", kNone), ROW("ti_ET", kNone),
    ROW("tk", kNone), ROW("tk_TM", kNone),
    ROW("tr", kTurkish), ROW("tr_TR", kTurkish),
    ROW("uk", kCyrillic), ROW("uk_UA", kCyrillic),
    ROW("ur", kArabic), ROW("ur_PK", kArabic),
    ROW("uz", kTurkish), ROW("uz_Cyrl", kCyrillic), ROW("uz_Cyrl_UZ", kCyrillic),
    ROW("uz_Latn", kTurkish), ROW("uz_Latn_UZ", kTurkish), ROW("uz_UZ", kCyrillic),
    ROW("vi", kVietnamese), ROW("vi_VN", kVietnamese),
    ROW("zh", kTraditional), ROW("zh_CN", kSimplified), ROW("zh_Hans", kTraditional),
    ROW("zh_Hans_CN", kSimplified), ROW("zh_Hans_SG", kSimplified), ROW("zh_Hant", kTraditional),
    ROW("zh_Hant_HK", kTraditional), ROW("zh_Hant_MO", kTraditional),
    ROW("zh_Hant_TW", kTraditional), ROW("zh_HK", kTraditional), ROW("zh_MO", kTraditional),
    ROW("zh_SG", kSimplified), ROW("zh_TW", kTraditional),
    {}, // the end
};
// clang-format on
#undef ROW

// Former spellings that are still met.
struct OldLocaleName {
    const char16_t* name;
    const char16_t* current;
};

inline constexpr OldLocaleName kOldLocaleNames[] = {
    {u"es_ES_Tr", u"es_ES"},      {u"sr_Cyrl_YU", u"sr_Cyrl_RS"}, {u"sr_Latn_YU", u"sr_Latn_RS"},
    {u"sr_SP_Cy", u"sr_Cyrl_RS"}, {u"sr_SP_Lt", u"sr_Latn_RS"},   {u"sr_YU", u"sr_RS"},
    {u"sr_YU_cy", u"sr_Cyrl_RS"}, {u"sr_YU_lt", u"sr_Latn_RS"},
};

namespace detail {
// The names are ASCII.
constexpr bool name_precedes(std::u16string_view a, std::u16string_view b) {
    constexpr auto lower = [](char16_t c) {
        return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
    };
    return std::lexicographical_compare(
        a.begin(), a.end(), b.begin(), b.end(),
        [lower](char16_t x, char16_t y) { return lower(x) < lower(y); });
}

template <class Row> constexpr bool ascends(const Row* rows, std::size_t count) {
    for (std::size_t i = 1; i < count; ++i)
        if (!name_precedes(rows[i - 1].name, rows[i].name)) return false;
    return true;
}
} // namespace detail

static_assert(std::size(kLocaleRows) == Locale::kCount + 1);
static_assert(detail::ascends(kLocaleRows, Locale::kCount));
static_assert(detail::ascends(kOldLocaleNames, std::size(kOldLocaleNames)));

} // namespace core
