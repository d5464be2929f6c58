#pragma once

#include <csetjmp>
#include <cstdio>
// The library's header needs <cstdio> before it.
#include <jpeglib.h>

namespace quillpress::level3 {

// libjpeg's errors jump back to where the library was called, since an exception must not pass through C; its
// warnings are not shown. Between setjmp and the library no object with a destructor may come to life.
struct JpegErrors {
  jpeg_error_mgr manager;
  std::jmp_buf back;

  static jpeg_error_mgr* install(JpegErrors& errors) {
    jpeg_std_error(&errors.manager);
    errors.manager.error_exit = [](j_common_ptr info) {
      std::longjmp(reinterpret_cast<JpegErrors*>(info->err)->back, 1);
    };
    errors.manager.emit_message = [](j_common_ptr, int) {};
    errors.manager.output_message = [](j_common_ptr) {};
    return &errors.manager;
  }
};

}  // namespace quillpress::level3
