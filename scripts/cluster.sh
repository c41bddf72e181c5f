# Private PostgreSQL clusters with the extension, for scripts/postgres and the tests. Sourced behind common.sh.
#
# The server finds its files relative to its own program, so a tree beside the clusters holds a copy of the programs,
# links to what else Debian installs, and this build's extension: nothing is installed, and every build has its own.
# Clusters listen on a socket alone, belong to an ordinary user, and are stopped when the script ends.

postgres_version=15
postgres_bin=/usr/lib/postgresql/$postgres_version/bin
postgres_regress=/usr/lib/postgresql/$postgres_version/lib/pgxs/src/test/regress/pg_regress

# need_postgres: installs the server, and what building the extension needs.
need_postgres() {
    need_packages g++ cmake ninja-build tzdata libc-bin "postgresql-$postgres_version" \
        "postgresql-server-dev-$postgres_version" util-linux
}

# as_server COMMAND...: runs it as the user that servers run as: Debian's postgres when this is root, in a folder that it
# may enter.
as_server() {
    if [ "$(id -u)" = 0 ]; then (cd / && exec runuser -u postgres -- "$@"); else "$@"; fi
}

# cluster_open BUILD: makes the tree for the extension of a build folder, in a folder that servers may enter.
# cluster_home is that folder.
cluster_open() {
    local build=$1 lib share file
    cluster_home=$build/postgres/home
    mkdir -p "$cluster_home"
    if ! as_server test -x "$cluster_home"; then cluster_home=$(mktemp -d /tmp/dvtypes.XXXXXX); fi
    chmod 755 "$cluster_home"
    cluster_tree=$cluster_home/tree
    lib=$cluster_tree/lib/postgresql/$postgres_version share=$cluster_tree/share/postgresql/$postgres_version
    rm -rf "$cluster_tree"
    mkdir -p "$lib/bin" "$lib/lib" "$share/extension"
    cp "$postgres_bin"/{postgres,initdb,pg_ctl,psql,pg_dump,pg_restore,pg_dumpall} "$lib/bin"
    ln -s "/usr/lib/postgresql/$postgres_version"/lib/* "$lib/lib/"
    for file in "/usr/share/postgresql/$postgres_version"/*; do
        [ "${file##*/}" = extension ] || ln -s "$file" "$share/"
    done
    ln -s "/usr/share/postgresql/$postgres_version"/extension/* "$share/extension/"
    rm -f "$lib/lib/dvtypes.so" "$share"/extension/dvtypes*
    cp "$build/postgres/dvtypes.so" "$lib/lib/"
    cp "$build"/postgres/dvtypes.control "$build"/postgres/dvtypes--*.sql "$share/extension/"
    cluster_bin=$lib/bin
    trap cluster_stop_all EXIT
}

# cluster_start NAME [OPTION...]: makes a new cluster and starts it; options as `postgres` takes them.
cluster_start() {
    local name=$1 folder=$cluster_home/$1
    shift
    cluster_stop "$name"
    rm -rf "$folder"
    mkdir -p "$folder/socket"
    if [ "$(id -u)" = 0 ]; then chown -R postgres "$folder"; fi
    as_server "$cluster_bin/initdb" -D "$folder/data" -U postgres -A trust --no-sync --locale=C -E UTF8 >"$folder.log" 2>&1 ||
        { cat "$folder.log" >&2; return 1; }
    as_server "$cluster_bin/pg_ctl" -D "$folder/data" -l "$folder/log" -w -s \
        -o "-k $folder/socket -c listen_addresses= -c fsync=off -c full_page_writes=off $*" start ||
        { cat "$folder/log" >&2; return 1; }
}

cluster_stop() {
    local folder=$cluster_home/$1
    [ ! -e "$folder/data/postmaster.pid" ] || as_server "$cluster_bin/pg_ctl" -D "$folder/data" -m fast -s stop || true
}

cluster_stop_all() {
    local folder
    for folder in "$cluster_home"/*/data; do
        [ ! -e "$folder/postmaster.pid" ] || as_server "$cluster_bin/pg_ctl" -D "$folder" -m immediate -s stop || true
    done
}

# cluster_psql NAME [ARGUMENT...]: psql in that cluster, without settings of the user.
cluster_psql() {
    local name=$1
    shift
    "$cluster_bin/psql" -X -h "$cluster_home/$name/socket" -U postgres -d postgres "$@"
}

# build_postgres BUILD: builds the extension alone, as a release, in a folder of its own.
build_postgres() {
    local build=$1
    mkdir -p "$build"
    [ -e "$build/postgres/dvtypes.so" ] || say "The first build of the extension takes some minutes" >&2
    { cmake -S "$ROOT" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DDV_BUILD_TESTS=OFF -DDV_BUILD_BENCH=OFF \
            -DDV_BUILD_SQLITE=OFF -DDV_BUILD_IMPORT=OFF &&
        cmake --build "$build" --target dvpostgres dvpostgres_script; } >"$build/build.log" 2>&1 ||
        { tail -n 40 "$build/build.log" >&2; return 1; }
}
