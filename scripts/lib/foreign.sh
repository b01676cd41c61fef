# Unpacks Debian packages for other processors without enabling their architectures on this machine. Sourced, never run.

foreign_packages=(libicu-dev libgtest-dev libgmock-dev librapidcheck-dev librange-v3-dev libboost-dev libxxhash-dev)

# versioned_packages: those that the packages above depend on and that have the version in their name.
versioned_packages() {
    apt-cache depends --important libicu-dev libboost-dev | grep -oxE ' *Depends: lib(icu|boost)[0-9].*' | sed 's/.* //'
}

# fetch_foreign_packages ARCHITECTURE FOLDER: downloads the packages once and unpacks them to FOLDER/root.
fetch_foreign_packages() {
    local architecture=$1 folder=$2 package
    [[ ! -e $folder/complete ]] || return 0
    mkdir -p "$folder"/{root,lists/partial,cache/archives/partial}
    cat >"$folder/apt.conf" <<CONFIGURATION
APT::Architecture "$architecture";
APT::Architectures { "$architecture"; };
Dir::State "$PWD/$folder";
Dir::State::status "/dev/null";
Dir::Cache "$PWD/$folder/cache";
Acquire::Languages "none";
APT::Sandbox::User "root";
CONFIGURATION
    (
        cd "$folder"
        export APT_CONFIG=$PWD/apt.conf
        apt-get -qq update || true # a missing package fails the download
        apt-get -qq download "${foreign_packages[@]}" $(versioned_packages)
        for package in *.deb; do
            dpkg-deb --extract "$package" root
        done
    )
    touch "$folder/complete"
}
