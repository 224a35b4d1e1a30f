#include "platform/net/ftp.h"

namespace jxc::net {
namespace ftp_words_detail {

constexpr int kNoRoom = 452, kOverQuota = 552;

QString reasonWords(const Result& result, const FtpServer& server, const Terms& terms) {
  switch (result.reason) {
    case Reason::None:
      return {};
    case Reason::Stopped:
      return u"传输已取消！"_qs;
    case Reason::Silent:
      return u"服务器 %1 超过 %2 秒没有回应！"_qs.arg(server.host).arg(terms.silence.count() / 1000.0);
    case Reason::UnknownName:
      return u"找不到服务器 %1，请检查服务器地址和网络！"_qs.arg(server.host);
    case Reason::Unreachable:
      return u"连接不上服务器 %1 的端口 %2！"_qs.arg(server.host).arg(server.port);
    case Reason::Unencrypted:
      return u"服务器 %1 不支持加密传输，用户名和密码没有发出！"_qs.arg(server.host);
    case Reason::Unverified:
      return u"服务器 %1 的证书不能核实，用户名和密码没有发出！"_qs.arg(server.host);
    case Reason::OtherKey:
      return u"服务器 %1 出示的不是所信任的证书，用户名和密码没有发出！"_qs.arg(server.host);
    case Reason::Login:
      return u"服务器 %1 不接受用户名或密码！"_qs.arg(server.host);
    case Reason::Folder:
      return server.folder.isEmpty()
                 ? u"服务器上没有所需的文件夹，或者不能进入！"_qs
                 : u"服务器上没有文件夹“%1”或其中所需的文件夹，或者不能进入！"_qs.arg(server.folder);
    case Reason::Refused:
      return result.code == kNoRoom || result.code == kOverQuota ? u"服务器 %1 的空间不足！"_qs.arg(server.host)
                                                                 : u"服务器 %1 拒绝了操作！"_qs.arg(server.host);
    case Reason::Cut:
      return u"与服务器 %1 的连接中断了！"_qs.arg(server.host);
    case Reason::File:
      return u"本机的文件没有能够读完或写完！"_qs;
    case Reason::Changed:
      return u"文件在传输时被改动了，请重新保存！"_qs;
  }
  return {};
}

}  // namespace ftp_words_detail

QString wordsOf(const Result& result, const FtpServer& server, const Terms& terms) {
  const QString words = ftp_words_detail::reasonWords(result, server, terms);
  const bool hasSaid = result.outcome == Outcome::Answered && !result.accepted && !result.answer.isEmpty();
  return hasSaid ? words + u"\r\n\r\n服务器说："_qs + result.answer : words;
}

}  // namespace jxc::net
