from pathlib import Path

from conan import ConanFile
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy

ROOT = Path(__file__).resolve().parents[2]


class VXPrivacy(ConanFile):
    name = "vxprivacy"
    version = "0.1.0"
    license = "Apache-2.0"
    description = "Consent management for C++ applications"
    settings = "os", "arch", "compiler", "build_type"
    requires = ("fast_float/6.1.0", "libcurl/8.6.0", "nlohmann_json/3.11.3", "simdjson/3.2.0", "spdlog/1.13.0",
                "sqlite3/3.45.0", "sqlitecpp/3.3.1")

    def export_sources(self):
        for folder in ("cmake", "vxprivacy"):
            copy(self, "*", ROOT / folder, Path(self.export_sources_folder, folder))
        for file in ("CMakeLists.txt", "LICENSE"):
            copy(self, file, ROOT, self.export_sources_folder)

    def layout(self):
        cmake_layout(self)

    def generate(self):
        CMakeDeps(self).generate()
        toolchain = CMakeToolchain(self)
        for part in ("C", "TOOLS", "TESTS"):  # C is a shared library, whatever the options say
            toolchain.cache_variables[f"VXPRIVACY_{part}"] = False
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()
        copy(self, "LICENSE", self.source_folder, Path(self.package_folder, "licenses"))

    def package_info(self):
        # The package brings its own CMake files, pkg-config too.
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs = ["lib/cmake/VXPrivacy"]
