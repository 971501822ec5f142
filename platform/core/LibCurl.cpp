#include "platform/core/LibCurl.h"

#include <dlfcn.h>

#include <stdexcept>
#include <string>

namespace seedmote::platform {
namespace {

constexpr const char* kLibrary = "libcurl.so.4";

std::runtime_error loadFailure() {
  const char* why = dlerror();
  return std::runtime_error(std::string("libcurl cannot be loaded: ") +
                            (why != nullptr ? why : "why is unknown"));
}

template <class Function>
void find(void* library, const char* name, Function*& function) {
  function = reinterpret_cast<Function*>(dlsym(library, name));
  if (function == nullptr) {
    throw loadFailure();
  }
}

LibCurl loaded() {
  LibCurl curl{};
  void* const library = dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);  // for the life of the process
  if (library == nullptr) {
    throw loadFailure();
  }
  find(library, "curl_easy_cleanup", curl.easy_cleanup);
  find(library, "curl_easy_getinfo", curl.easy_getinfo);
  find(library, "curl_easy_init", curl.easy_init);
  find(library, "curl_easy_setopt", curl.easy_setopt);
  find(library, "curl_easy_strerror", curl.easy_strerror);
  find(library, "curl_free", curl.free);
  find(library, "curl_multi_add_handle", curl.multi_add_handle);
  find(library, "curl_multi_cleanup", curl.multi_cleanup);
  find(library, "curl_multi_info_read", curl.multi_info_read);
  find(library, "curl_multi_init", curl.multi_init);
  find(library, "curl_multi_perform", curl.multi_perform);
  find(library, "curl_multi_poll", curl.multi_poll);
  find(library, "curl_multi_remove_handle", curl.multi_remove_handle);
  find(library, "curl_multi_wakeup", curl.multi_wakeup);
  find(library, "curl_slist_append", curl.slist_append);
  find(library, "curl_slist_free_all", curl.slist_free_all);
  find(library, "curl_strequal", curl.strequal);
  find(library, "curl_url", curl.url);
  find(library, "curl_url_cleanup", curl.url_cleanup);
  find(library, "curl_url_get", curl.url_get);
  find(library, "curl_url_set", curl.url_set);
  find(library, "curl_url_strerror", curl.url_strerror);

  decltype(&::curl_global_init) global_init = nullptr;
  find(library, "curl_global_init", global_init);
  global_init(CURL_GLOBAL_DEFAULT);  // a failure shows in the first exchange
  return curl;
}

}  // namespace

const LibCurl& curl() {
  static const LibCurl library = loaded();
  return library;
}

}  // namespace seedmote::platform
