#pragma once

namespace ZQV {

/** Empty base of File. */
class FileAttr {};

}  // namespace ZQV
