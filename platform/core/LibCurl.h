#pragma once

#include <curl/curl.h>

namespace seedmote::platform {

// libcurl's functions, by the names that curl/curl.h gives them without "curl_".
struct LibCurl {
  decltype(&::curl_easy_cleanup) easy_cleanup;
  decltype(&::curl_easy_getinfo) easy_getinfo;
  decltype(&::curl_easy_init) easy_init;
  decltype(&::curl_easy_setopt) easy_setopt;
  decltype(&::curl_easy_strerror) easy_strerror;
  decltype(&::curl_free) free;
  decltype(&::curl_multi_add_handle) multi_add_handle;
  decltype(&::curl_multi_cleanup) multi_cleanup;
  decltype(&::curl_multi_info_read) multi_info_read;
  decltype(&::curl_multi_init) multi_init;
  decltype(&::curl_multi_perform) multi_perform;
  decltype(&::curl_multi_poll) multi_poll;
  decltype(&::curl_multi_remove_handle) multi_remove_handle;
  decltype(&::curl_multi_wakeup) multi_wakeup;
  decltype(&::curl_slist_append) slist_append;
  decltype(&::curl_slist_free_all) slist_free_all;
  decltype(&::curl_strequal) strequal;
  decltype(&::curl_url) url;
  decltype(&::curl_url_cleanup) url_cleanup;
  decltype(&::curl_url_get) url_get;
  decltype(&::curl_url_set) url_set;
  decltype(&::curl_url_strerror) url_strerror;
};

// Loads the library when it is first called. It brings twenty others along, whose loading takes a tenth of a
// start, and no window needs them: the first exchange calls this, not the linker. Raises std::runtime_error
// when it cannot be loaded. Any thread.
const LibCurl& curl();

}  // namespace seedmote::platform
