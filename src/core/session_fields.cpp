#include "core/session_fields.h"

#include <array>

namespace jxc::session_fields_detail {

inline constexpr auto company = std::to_array<SessionField>({
    {"c_name", &Session::c_name},
    {"c_jc", &Session::c_jc},
    {"c_lxr", &Session::c_lxr},
    {"c_tele", &Session::c_tele},
    {"c_address", &Session::c_address},
});

inline constexpr auto parameters = std::to_array<SessionField>({
    {"cs_cgdj", &Session::cs_cgdj},
    {"cs_xsdj", &Session::cs_xsdj},
    {"cs_xgdj", &Session::cs_xgdj},
    {"cs_kc", &Session::cs_kc},
    {"cs_ysdh", &Session::cs_ysdh},
    {"cs_spbh", &Session::cs_spbh},
    {"cs_ct", &Session::cs_ct},
    {"cs_xt", &Session::cs_xt},
    {"cs_cgyh", &Session::cs_cgyh},
    {"cs_xsyh", &Session::cs_xsyh},
    {"cs_shdj", &Session::cs_shdj},
    {"cs_shtc", &Session::cs_shtc},
    {"cs_xjyh", &Session::cs_xjyh},
    {"cs_cbjs", &Session::cs_cbjs},
    {"cs_xsws", &Session::cs_xsws},
    {"cs_zjews", &Session::cs_zjews},
    {"cs_jews", &Session::cs_jews},
    {"cs_ts", &Session::cs_ts},
    {"cs_hbfh", &Session::cs_hbfh},
    {"cs_posdj", &Session::cs_posdj},
    {"cs_tjcyjf", &Session::cs_tjcyjf},
    {"cs_posfkws", &Session::cs_posfkws},
    {"cs_posblur", &Session::cs_posblur},
    {"cs_poshooktoday", &Session::cs_poshooktoday},
    {"cs_barcode", &Session::cs_barcode},
    {"cs_barunique", &Session::cs_barunique},
    {"cs_zerocost", &Session::cs_zerocost},
    {"cs_possk", &Session::cs_possk},
    {"cs_xsjgts", &Session::cs_xsjgts},
    {"cs_djsh", &Session::cs_djsh},
    {"cs_employ", &Session::cs_employ},
    {"cs_employts", &Session::cs_employts},
    {"cs_employdate", &Session::cs_employdate},
    {"cs_wxzf", &Session::cs_wxzf},
    {"cs_mchid", &Session::cs_mchid},
    {"cs_key", &Session::cs_key},
    {"cs_kp", &Session::cs_kp},
    {"cs_hs", &Session::cs_hs},
    {"cs_tax", &Session::cs_tax},
    {"cs_sms", &Session::cs_sms},
    {"cs_hcj", &Session::cs_hcj},
    {"cs_sprk", &Session::cs_sprk},
    {"cs_spck", &Session::cs_spck},
    {"cs_lsj", &Session::cs_lsj},
    {"cs_scjh", &Session::cs_scjh},
    {"cs_scrk", &Session::cs_scrk},
    {"cs_spcz", &Session::cs_spcz},
    {"cs_dbdj", &Session::cs_dbdj},
    {"cs_jhzk", &Session::cs_jhzk},
    {"cs_zdzk", &Session::cs_zdzk},
    {"cs_ht", &Session::cs_ht},
    {"cs_kddy", &Session::cs_kddy},
    {"cs_fzdw", &Session::cs_fzdw},
    {"cs_cgje", &Session::cs_cgje},
    {"cs_xsje", &Session::cs_xsje},
    {"cs_activate", &Session::cs_activate},
    {"cs_activatets", &Session::cs_activatets},
    {"cs_djrq", &Session::cs_djrq},
    {"cs_dysx", &Session::cs_dysx},
    {"cs_cs001", &Session::cs_cs001},
    {"cs_cs002", &Session::cs_cs002},
    {"cs_cs003", &Session::cs_cs003},
    {"cs_cs004", &Session::cs_cs004},
    {"cs_cs005", &Session::cs_cs005},
    {"cs_cs006", &Session::cs_cs006},
    {"cs_cs007", &Session::cs_cs007},
    {"cs_cs008", &Session::cs_cs008},
    {"cs_cs009", &Session::cs_cs009},
    {"cs_cs010", &Session::cs_cs010},
    {"cs_cs011", &Session::cs_cs011},
    {"cs_cs012", &Session::cs_cs012},
    {"cs_cs013", &Session::cs_cs013},
    {"cs_cs014", &Session::cs_cs014},
    {"cs_cs015", &Session::cs_cs015},
    {"cs_cs016", &Session::cs_cs016},
    {"cs_cs017", &Session::cs_cs017},
    {"cs_cs018", &Session::cs_cs018},
    {"cs_cs019", &Session::cs_cs019},
    {"cs_cs020", &Session::cs_cs020},
    {"cs_cs021", &Session::cs_cs021},
    {"cs_cs022", &Session::cs_cs022},
    {"cs_cs023", &Session::cs_cs023},
    {"cs_cs024", &Session::cs_cs024},
    {"cs_cs025", &Session::cs_cs025},
    {"cs_cs026", &Session::cs_cs026},
    {"cs_cs027", &Session::cs_cs027},
    {"cs_cs028", &Session::cs_cs028},
    {"cs_cs029", &Session::cs_cs029},
    {"cs_cs030", &Session::cs_cs030},
    {"cs_cs031", &Session::cs_cs031},
    {"cs_cs032", &Session::cs_cs032},
    {"cs_cs033", &Session::cs_cs033},
    {"cs_bcqdy", &Session::cs_bcqdy},
    {"cs_djzddy", &Session::cs_djzddy},
    {"cs_djzddysl", &Session::cs_djzddysl},
    {"cs_tmzdsc", &Session::cs_tmzdsc},
    {"cs_tmscff", &Session::cs_tmscff},
    {"cs_posrq", &Session::cs_posrq},
});

inline constexpr auto points = std::to_array<SessionField>({
    {"jf_jfgz", &Session::jf_jfgz},     {"jf_mfje", &Session::jf_mfje},       {"jf_djjf", &Session::jf_djjf},
    {"jf_jsrjf", &Session::jf_jsrjf},   {"jf_jsrjl", &Session::jf_jsrjl},     {"jf_dbjf", &Session::jf_dbjf},
    {"jf_dbrq1", &Session::jf_dbrq1},   {"jf_dbrq2", &Session::jf_dbrq2},     {"jf_yelj", &Session::jf_yelj},
    {"jf_hysk", &Session::jf_hysk},     {"jf_qchy", &Session::jf_qchy},       {"jf_xgxf", &Session::jf_xgxf},
    {"jf_ick", &Session::jf_ick},       {"jf_icktype", &Session::jf_icktype}, {"jf_srjflx", &Session::jf_srjflx},
    {"jf_srjfbs", &Session::jf_srjfbs}, {"jf_srjfts", &Session::jf_srjfts},   {"jf_hyr", &Session::jf_hyr},
    {"jf_hyr1", &Session::jf_hyr1},     {"jf_hyr2", &Session::jf_hyr2},       {"jf_hyrmy1", &Session::jf_hyrmy1},
    {"jf_hyrmy2", &Session::jf_hyrmy2}, {"jf_hyrzk", &Session::jf_hyrzk},
});

inline constexpr auto sms = std::to_array<SessionField>({
    {"sms_sign", &Session::sms_sign},
    {"sms_user", &Session::sms_user},
    {"sms_pwd", &Session::sms_pwd},
    {"sms_cznote", &Session::sms_cznote},
    {"sms_xfnote", &Session::sms_xfnote},
});

}  // namespace jxc::session_fields_detail

namespace jxc {

std::span<const SessionField> companyFields() {
  return session_fields_detail::company;
}

std::span<const SessionField> parameterFields() {
  return session_fields_detail::parameters;
}

std::span<const SessionField> pointsFields() {
  return session_fields_detail::points;
}

std::span<const SessionField> smsFields() {
  return session_fields_detail::sms;
}

}  // namespace jxc
