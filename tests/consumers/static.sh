#!/bin/sh
# static.sh SOURCES FOLDER COMPILER: builds and installs the static library, and
# programs with it by find_package and by pkg-config. It starts before the
# objects of static storage of its host, and stops after them.
set -eu
sources=$1 folder=$2 compiler=$3

cmake --fresh -S "$sources" -B "$folder/build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF \
    -DCMAKE_CXX_COMPILER="$compiler" -DVARNEL_BUILD_TESTS=OFF -DVARNEL_BUILD_EXAMPLES=OFF >/dev/null
cmake --build "$folder/build" -- --quiet
rm -rf "$folder/stage"
cmake --install "$folder/build" --prefix "$folder/stage" >/dev/null
if find "$folder/stage" -name '*.so*' | grep .; then exit 1; fi

cmake --fresh -S "$sources/tests/consumers/find_package" -B "$folder/consumer" -G Ninja \
    -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$folder/stage" \
    -DCMAKE_FIND_USE_CMAKE_SYSTEM_PATH=OFF >/dev/null
cmake --build "$folder/consumer" -- --quiet
"$folder/consumer/consumer"

PKG_CONFIG_LIBDIR=$(dirname "$(find "$folder/stage" -name '*.pc')")
export PKG_CONFIG_LIBDIR
said=$(pkg-config --static --cflags --libs ka_time_varnel)
cat >"$folder/expected" <<'END'
host made: Thursday PDT7
library made: Thursday PDT7
main
library gone: Thursday PDT7
host gone: Thursday PDT7
END
for flags in "" "-ffunction-sections -Wl,--gc-sections" "-static"; do
    # It is quoted for a shell, and the flags are words of their own.
    eval "\"\$compiler\" -std=c++20 $flags \"\$sources/tests/hosts/static_host.cpp\" \
        \"\$sources/tests/hosts/static_lib.cpp\" $said -o \"\$folder/host\""
    "$folder/host" | diff "$folder/expected" -
done

# A program and a shared library of its own, each with the library inside: they share nothing.
cat >"$folder/expected" <<'END'
library made: Thursday PDT7
host made: Thursday PDT7
main
host gone: Thursday PDT7
library gone: Thursday PDT7
END
eval "\"\$compiler\" -std=c++20 -fPIC -fvisibility=hidden -shared \"\$sources/tests/hosts/static_lib.cpp\" $said -o \"\$folder/libuser.so\""
eval "\"\$compiler\" -std=c++20 -Wl,--no-as-needed \"\$sources/tests/hosts/static_host.cpp\" \"\$folder/libuser.so\" $said \
    -o \"\$folder/host\""
"$folder/host" | diff "$folder/expected" -
if nm -DC --defined-only "$folder/libuser.so" | grep -E ' ka_(date|time|init)'; then exit 1; fi

cmake --fresh -S "$sources/tests/consumers/add_subdirectory" -B "$folder/inside" -G Ninja -DBUILD_SHARED_LIBS=OFF \
    -DCMAKE_CXX_COMPILER="$compiler" -DLIBRARY_SOURCES="$sources" >/dev/null
cmake --build "$folder/inside" --target consumer -- --quiet
"$folder/inside/consumer"
if ldd "$folder/inside/consumer" | grep ka_time_varnel; then exit 1; fi
