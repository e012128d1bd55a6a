#!/usr/bin/env bash
# packages_check.sh PACKAGES SAMPLES: the Debian packages, as lintian and a bare Debian see them. The
# tool's is installed alone and works; a program is built with the library's; all are removed and leave
# nothing behind. Takes root and the system's package archive.
set -euo pipefail
packages=$1 samples=$2
[ "$(id -u)" = 0 ] || exec sudo "$0" "$@"
cd "$packages"
lintian --fail-on error -- *.deb

root=$packages/root
leave() {
  umount "$root/proc" 2>/dev/null || true
  rm -rf "$root"
}
leave
trap leave EXIT
mirror=$(sed -n '/Suites:.*updates/!{s/^URIs: *//p}' /etc/apt/sources.list.d/debian.sources 2>/dev/null | head -n 1)
debootstrap --variant=minbase bookworm "$root" "${mirror:-http://deb.debian.org/debian}" >"$packages/debootstrap.log" ||
  { tail -n 5 "$packages/debootstrap.log"; exit 1; }
cp /etc/resolv.conf "$root/etc/"
mkdir "$root/debs"
cp -- *.deb "$samples/array.cmap" "$root/debs"
mount -t proc proc "$root/proc"
within() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive bash -euo pipefail -c "$1"; }
step() { echo "packages: $1"; within "$2" >"$packages/step.log" 2>&1 || { cat "$packages/step.log"; exit 1; }; }

install='apt-get install -y -qq --no-install-recommends'
step 'the tool alone' "
  $install /debs/mpuevent_*.deb
  if dpkg -s libmpuevent0; then exit 1; fi
  [ \$(mpuevent decode --count /debs/array.cmap | cut -d ' ' -f 1) = 438 ]
  gzip -c /debs/array.cmap | mpuevent summary | grep -q '438 events'
  tar -c /debs/array.cmap | mpuevent summary | grep -q '438 events'
  mpuevent store /tmp/events.db /debs/array.cmap
  [ \$(mpuevent decode -o jsonl /tmp/events.db | wc -l) = 438 ]
  { mpuevent store postgresql:///test /debs/array.cmap 2>&1 || true; } | grep 'needs libpq: libpq.so.5'
  mpuevent schema summary | cmp - /usr/share/mpuevent/schema/summary.json
  for command in decode summary explain store schema; do
    zgrep -q '^.TH \"mpuevent-'\$command'\" \"1\"' /usr/share/man/man1/mpuevent-\$command.1.gz
  done
  . /usr/share/bash-completion/completions/mpuevent
  complete -p mpuevent
  cmp /etc/lnav/formats/mpuevent/mpuevent.lnav.json /usr/share/mpuevent/mpuevent.lnav.json"
step 'a program with the library' "
  $install g++ pkg-config dpkg-dev /debs/lib*.deb
  cd /tmp
  zgrep -q libmpuevent /usr/share/man/man3/libmpuevent.3.gz
  g++ -std=c++11 /usr/share/doc/libmpuevent-dev/examples/agent/agent.cpp \$(pkg-config --cflags --libs mpuevent) -o agent
  [ \$(./agent </debs/array.cmap | grep -c '^[0-9]') = 438 ]
  mkdir debian && touch debian/control
  dpkg-shlibdeps -O ./agent >needs
  grep -q 'libmpuevent0 (>= [0-9.]*)' needs
  grep -q 'libmpuevent0 (<< [0-9.]*~)' needs
  apt-get purge -y -qq libmpuevent-dev
  ./agent </debs/array.cmap >/dev/null"
step 'removed' "
  rm -r /tmp/*
  apt-get purge -y -qq libmpuevent0 mpuevent
  rm -r /debs
  ! find / -xdev -iname '*mpuevent*' -not -path '/proc/*' | grep ."
(cd "$packages" && du -b -- *.deb)
