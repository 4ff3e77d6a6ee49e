"""The privacy module from Python, over its C interface (vxprivacy/c/vxprivacy.h)."""

import ctypes
from ctypes import byref, c_char_p, c_double, c_int, c_size_t, c_void_p

STORE, PACKAGED, CONFIGURATION_HOST, VENDOR_LIST_HOST, COLLECTOR_HOST = range(1, 6)
USER_AGENT, LOG_FILE, LANGUAGE, OWNER = range(6, 10)
SITE, PRIVACY, CONTAINER, IAB, LOG_LEVEL, SWITCHES_START_ON = range(1, 7)
SAVE, DISCARD = 1, 2
TCF_LOADED, TCF_CENTER_SHOWN, TCF_USER_ACTION_COMPLETE = range(1, 4)

library = ctypes.CDLL("libvxprivacy_c.so.0.1")
library.vx_result_text.restype = c_char_p
library.vx_content_security_policy.restype = c_char_p
library.vx_free.argtypes = [c_void_p]


class Error(Exception):
    pass


def call(function, *arguments):
    result = getattr(library, function)(*arguments)
    if result != 0:
        raise Error(f"{function}: {library.vx_result_text(result).decode()}")


def text_of(function, *arguments):
    text, length = c_void_p(), c_size_t()
    call(function, *arguments, byref(text), byref(length))
    if not text:
        return None
    try:
        return ctypes.string_at(text, length.value).decode()
    finally:
        library.vx_free(text)


def static_files():
    """Media type and content of the files that pages need, by name."""
    files, name, media_type, content, length = {}, c_char_p(), c_char_p(), c_void_p(), c_size_t()
    while library.vx_static_file(c_size_t(len(files)), byref(name), byref(media_type),
                                 byref(content), byref(length)) == 0:
        files[name.value.decode()] = (media_type.value.decode(),
                                      ctypes.string_at(content, length.value))
    return files


class Module:
    """The module, started. All of it, and of its center, on one thread."""

    def __init__(self, texts, numbers=()):
        settings, self.handle = c_void_p(), c_void_p()
        call("vx_settings_create", byref(settings))
        try:
            for setting, text in dict(texts).items():
                encoded = str(text).encode()
                call("vx_set_text", settings, setting, encoded, c_size_t(len(encoded)))
            for setting, number in dict(numbers).items():
                call("vx_set_number", settings, setting, number)
            call("vx_create", settings, byref(self.handle))
        finally:
            call("vx_settings_free", settings)
        call("vx_start", self.handle)

    def close(self):
        call("vx_destroy", self.handle)

    def poll(self):
        call("vx_poll", self.handle)

    def must_ask(self):
        """0: no; 1: for the first time; 2: the choice is too old; 3: the configuration changed."""
        asking = c_int()
        call("vx_must_ask", self.handle, byref(asking))
        return asking.value

    def accept_all(self):
        call("vx_accept_all", self.handle)

    def refuse_all(self):
        call("vx_refuse_all", self.handle)

    def category_accepted(self, category):
        accepted = c_int()
        call("vx_category_accepted", self.handle, category, byref(accepted))
        return bool(accepted.value)

    def stored_text(self, key):
        encoded = key.encode()
        return text_of("vx_stored_text", self.handle, encoded, c_size_t(len(encoded)))

    def tcfapi_script(self, event=TCF_LOADED):
        """To be run at the start of each page that the application's web views show from now on."""
        return text_of("vx_tcfapi_script", self.handle, event)

    def tcfapi_update(self, event):
        """To be evaluated in the page that is shown."""
        return text_of("vx_tcfapi_update", self.handle, event)


class Center:
    """A privacy center of the module's, which is to be closed before the module is."""

    def __init__(self, module, width, height, first=0):
        self.handle = c_void_p()
        call("vx_center_open", module.handle, c_double(width), c_double(height), first,
             byref(self.handle))

    def page(self):
        return text_of("vx_center_page", self.handle)

    def layout(self):
        return text_of("vx_center_layout", self.handle)

    def dispatch(self, event):
        return text_of("vx_center_dispatch", self.handle, event, c_size_t(len(event)))

    def done(self):
        done = c_int()
        call("vx_center_done", self.handle, byref(done))
        return bool(done.value)

    def close(self, closing=SAVE):
        call("vx_center_close", self.handle, closing)
