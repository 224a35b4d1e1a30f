// 会话: what the process knows about the operator, the company and every parameter; filled by login and loadSession.
#pragma once

#include <QString>

namespace jxc {

/// Who works here. Empty until the login.
struct OperatorIdentity {
  QString a_name;   // login name, also written on every document row
  QString a_sn;     // operator key
  QString r_sn;     // role key; "100001" is the administrator's role
  QString localIp;  // this machine's address; the payment gateway asks for it
};

/// The company row of the account set (`jxc_company`).
struct CompanyRecord {
  QString c_name, c_jc, c_lxr, c_tele, c_address;
};

/// The one row of `jxc_xtcs` as text, by the names of its fields. A switch is tested with `strIsTrue`.
struct SystemParameters {
  QString cs_cgdj, cs_xsdj, cs_xgdj, cs_kc, cs_ysdh, cs_spbh, cs_ct, cs_xt, cs_cgyh, cs_xsyh, cs_shdj, cs_shtc, cs_xjyh;
  QString cs_cbjs;   // quantity decimals; as a number: Session::cbjsDigits
  QString cs_xsws;   // money and price decimals; as a number: Session::xswsDigits
  QString cs_zjews;  // on: totals have decimals of their own
  QString cs_jews;   // decimals of totals; equals cs_xsws while cs_zjews is off
  QString cs_ts, cs_hbfh, cs_posdj, cs_tjcyjf, cs_posfkws, cs_posblur, cs_poshooktoday, cs_barcode, cs_barunique;
  QString cs_zerocost, cs_possk, cs_xsjgts, cs_djsh, cs_employ, cs_employts;
  QString cs_employdate;  // schema stamp, no business date
  QString cs_wxzf, cs_mchid, cs_key, cs_kp, cs_hs, cs_tax, cs_sms, cs_hcj, cs_sprk, cs_spck, cs_lsj, cs_scjh, cs_scrk;
  QString cs_spcz, cs_dbdj, cs_jhzk, cs_zdzk, cs_ht, cs_kddy, cs_fzdw, cs_cgje, cs_xsje, cs_activate, cs_activatets;
  QString cs_djrq, cs_dysx, cs_cs001, cs_cs002, cs_cs003;
  QString cs_cs004;  // customer display speed in baud: "2400" or "9600", not the stored index
  QString cs_cs005, cs_cs006, cs_cs007, cs_cs008, cs_cs009, cs_cs010, cs_cs011, cs_cs012, cs_cs013, cs_cs014, cs_cs015;
  QString cs_cs016, cs_cs017, cs_cs018, cs_cs019, cs_cs020, cs_cs021, cs_cs022, cs_cs023, cs_cs024, cs_cs025, cs_cs026;
  QString cs_cs027, cs_cs028, cs_cs029, cs_cs030, cs_cs031, cs_cs032, cs_cs033;
  QString cs_bcqdy, cs_djzddy, cs_djzddysl, cs_tmzdsc, cs_tmscff, cs_posrq;
};

/// Points and member rules (`jxc_jfsz`).
struct PointsRules {
  QString jf_jfgz, jf_mfje, jf_djjf, jf_jsrjf, jf_jsrjl, jf_dbjf, jf_dbrq1, jf_dbrq2, jf_yelj, jf_hysk, jf_qchy,
      jf_xgxf;
  QString jf_ick, jf_icktype, jf_srjflx, jf_srjfbs, jf_srjfts, jf_hyr, jf_hyr1, jf_hyr2, jf_hyrmy1, jf_hyrmy2, jf_hyrzk;
};

/// SMS gateway settings (`jxc_smscs`).
struct SmsSettings {
  QString sms_sign, sms_user, sms_pwd, sms_cznote, sms_xfnote;
};

/// Process-wide record. Business screens read it and never write it, but for `editMode`.
struct Session : OperatorIdentity, CompanyRecord, SystemParameters, PointsRules, SmsSettings {
  QString dbName;       // "jxc.mdb" after the login
  QString accountName;  // "晴川进销存"; also the first part of backup file names

  // Numbers that all rounding goes by, always within 0..6.
  int xswsDigits = 2;  // money and unit price
  int cbjsDigits = 2;  // quantity
  int jewsDigits = 2;  // totals: cs_jews when cs_zjews is on, the money digits otherwise

  // Rights that screens ask for on every row; all other rights are read from the database at each test.
  bool canSeeCost = false;         // hasRight("qtcz",7)
  bool canChangeDocDate = false;   // hasRight("qtcz",8)
  bool canQtcz21 = false;          // hasRight("qtcz",21): only the built-in role has that many characters
  bool canSeePrice = false;        // hasRight("qtcz",9)
  bool canChangeSaleCost = false;  // hasRight("xsgl",14)

  // Print templates by parameters and rights.
  QString salesTemplate, salesReturnTemplate, transferTemplate, purchaseTemplate, purchaseReturnTemplate;

  int back_sj = 0;               // hours between backups
  QString back_auto, back_exit;  // "1" when on

  QString memberDayActive;  // "1" on a member day, otherwise empty
  QString mailDue;          // "1" when today's mail digest was not sent yet, otherwise "0"

  QString editMode;       // what a shared screen is opened for: "hb", the login to change the operator
  bool posLogin = false;  // a login of the register skips log, session and schema upgrade; nothing here sets it
};

Session& session();

/// The key of the administrator's role, of the built-in operator, and of the built-in row of most tables.
inline constexpr const char16_t* builtInSn = u"100001";

/// True for the administrator's role: no warehouse binding applies to it.
bool isAdministrator();
/// Operators are bound to warehouses (`cs_cgyh`) and this one is no administrator.
bool isWarehouseBound();
/// Lists of operators, employees, partners follow the operator's warehouses (`cs_shtc`), and this one is no
/// administrator.
bool areListsBound();

/// Reads company, parameters, cached rights, templates, backup, points, SMS and mail state anew; everything that it
/// reads is replaced. The operator's fields must be filled. Throws DbError, for instance on a database older than this
/// build; what was read before the failure stays.
void loadSession();

}  // namespace jxc
