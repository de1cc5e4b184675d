#!/usr/bin/env bash
# Draws the pictures of the user's guide from invented data, and a page that shows each with its
# command.
#
#   scripts/gallery.sh [PROGRAM]    the default is the release build
set -euo pipefail
cd "$(dirname "$0")/.."
program=${1:-build/release/src/scopeview}
if [[ ! -x $program ]]; then
  cmake --preset release >/dev/null
  cmake --build build/release --target scopeview
fi
program=$(realpath "$program")
gallery=$PWD/build/gallery
mkdir -p "$gallery"
[[ -e $gallery/data/lev2/KTLX ]] || tools/make_examples.py "$gallery/data"
cp data/sample.nids data/sample_rain.nids "$gallery/data/"
cd "$gallery"

index=index.html
echo '<!DOCTYPE html><meta charset="utf-8"><title>scopeview: gallery</title>
<style>body{font-family:sans-serif;max-width:64em;margin:auto}img{max-width:100%}</style>
<h1>Gallery</h1>' >$index

# A picture: its name, what it shows, and what it is drawn with, besides device and file path.
draw() {
  local name=$1 what=$2 rest
  shift 2
  rm -f "$name"
  rest=$(printf ' %q' "$@")
  SOURCE_DATE_EPOCH=1746049320 "$program" -strict -me none -fp "$OLDPWD/data" -ge 800x640 "$@" -de raster \
    -ou "${name##*.}:$name"
  [[ -s $name ]] || { echo "gallery: no $name" >&2; exit 1; }
  echo "<h2>$what</h2><pre>scopeview${rest//[&<>]/} -ou $name</pre><img src=\"$name\">" >>$index
  echo "$name: $what"
}

rain=(-in nids data/sample_rain.nids)
draw base.png "Base reflectivity" -in nids data/sample.nids
draw storms.png "Storms, tracks, rings" "${rain[@]}" -va comp,track -pa site,dist=100:200
draw close.png "Two storms, with the size of hail in cm" "${rain[@]}" -pd ps:-98,34.7,-97.6,.09 -va cid,hsize:un=cm,cstat -sc 1.5
draw lambert.png "Lambert conformal" "${rain[@]}" -pd lc:40:-97:33:45,35.3,-97.3,97,73,.08,.08 \
  -mf us_states.map:white,+lalo:1:gray:st=dot
draw satellite.png "From a satellite" "${rain[@]}" -pd sat:0:-75,32,-95,61,49,.6,.6 \
  -mf cont50.map:tan,country50.map:tan,us_states.map:gray,lalo:10:dgray
draw colours.png "Own colours" "${rain[@]}" -pa inv -bg white -com gray -cot black \
  -cof '-100:off,20:#c8e6ff,30:#6eaaff,40:#1e50ff,50:#cd0a0a' -mf us_states.map:black,us_counties.map:lgray
draw lev2.png "Level II, first cut" -in lev2z data/lev2/KTLX/KTLX20250430_2142.ar2v -pa range=230
draw velocity.png "Velocity of the second" -in lev2z -va vel2 data/lev2/KTLX/KTLX20250430_2142.ar2v -pa range=150
draw mosaic.png "National mosaic" -in now data/mosaic.now -pa bar
draw echoes.png "Its echoes alone, which know where they lie" -in now data/mosaic.now -pa full -dr plot -mf none
draw north.png "That picture, on a map from the pole" -in img echoes.png -pd ps:90:-100,65,-100,61,49,1.6,1.6 \
  -mf cont50.map:tan,country50.map:tan,lalo:10:dgray
draw world.png "The same on the earth" -in img echoes.png -pd mo:0:-90,0,-90,61,31,6,6 \
  -mf cont50.map:tan,country50.map:gray,lalo:30:dgray
draw rcm.png "RCM: the nation, and what radars report" -in rcm data/rcm/202504302130.rcm -va stat,storm \
  -pd ps:90:-98,36,-97.5,41,29,.3,.3 -pa bar
draw field.png "RCM as a field, with contours of one's own; the grid of a region" -in rcmg data/rcm/202504302130.rcm \
  -cof off,blue,cyan,green,yellow,red -pa int=12,bar -mf us_states.map:gray,grid:cp:gray
draw rcmsite.png "RCM of one radar" -in rcmsite -id TLX data/rcm/TLX.txt -va storm,tvs,meso -pa site,dist=100:200 \
  -mf us_states.map:tan,us_counties.map:dgray
draw mdr.png "MDR: the nation" -in mdr data/mdr/2025043021.mdr -va comp -mf us_states.map:gray,+lalo:10:dgray -pa bar
draw mdrsite.png "MDR of one radar, with the area of its echoes" -in mdrsite -tp data -id TLX \
  -cu '#202504302100' -va area,comp -pa site -mf us_states.map:tan,us_counties.map:dgray
draw winds.png "Winds above a radar" -in nids data/nids/TLX/NVW/TLX_NVW_20250430_2142.nids -cog dgray
draw table.png "The table of storms, in a view twice as wide as high" "${rain[@]}" -va cid -pa table \
  -pd ps:90:-97,35.3,-94,121,51,.1,.1 -mf us_states.map:tan -cog gray -ge 1280x640
draw loop.gif "Animation" -in nids -dp data -id TLX -ty NCR -cu '#202504302150' -pa nf=6,linc=10,anim

rm -f page.ps page.png table_page.ps table_page.png
"$program" -strict -me none -fp "$OLDPWD/data" "${rain[@]}" -va comp,track -de ps,page.ps,color
gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=png16m -r80 -dAutoRotatePages=/None -sOutputFile=page.png \
  -c '<</Orientation 3>> setpagedevice' -f page.ps
echo "<h2>A page</h2><pre>scopeview -in nids data/sample_rain.nids -va comp,track -de ps,page.ps,color</pre><img src=\"page.png\">" >>$index
echo "page.png: A page"
echo "gallery: $gallery/$index"
