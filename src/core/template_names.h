// 模板名: the names of the print templates that a session holds by parameters and rights.
#pragma once

namespace jxc {

struct Session;

/// Sets them from the parameters and the cached rights of this session.
void chooseTemplates(Session& session);

}  // namespace jxc
