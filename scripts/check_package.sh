#!/usr/bin/env bash
# Installs the Debian package into a clean root and draws a picture there, with no display and no
# option but input and output. Needs root, debootstrap and a Debian mirror; too slow for every run of CI.
#
#   scripts/check_package.sh [ROOT]    a root made before is used again (default build/package/root)
set -euo pipefail
cd "$(dirname "$0")/.."
root=${1:-build/package/root}
scripts/package.sh
deb=$(ls build/package/scopeview_*.deb)
if command -v lintian >/dev/null; then
  lintian --fail-on error "$deb"
fi
[[ -d $root/usr/bin ]] || debootstrap --variant=minbase bookworm "$root" >build/package/debootstrap.log
cp "$deb" data/sample.nids "$root/tmp/"
chroot "$root" sh -e <<'IN'
cd /tmp
apt-get -qq update
DEBIAN_FRONTEND=noninteractive apt-get -qq -y install --no-install-recommends ./scopeview_*.deb >/dev/null 2>&1
rm -f out.png
unset DISPLAY
scopeview -in nids sample.nids -ou png:out.png
apt-get -qq -y purge scopeview >/dev/null 2>&1
test ! -e /usr/bin/scopeview && test ! -e /etc/zqv/zqv.cfg
IN
test "$(head -c 4 "$root/tmp/out.png" | tail -c 3)" = PNG
echo "check_package: $root/tmp/out.png"
