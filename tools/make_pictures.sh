#!/usr/bin/env bash
# Makes the pictures of readme.htm (readme/), README.md and docs/look.md (docs/pictures/) anew from the demonstration
# shop: the program off-screen, each picture cut down to the few colours that a screen has. Needs ImageMagick.
# Usage: tools/make_pictures.sh [PROGRAM]    (default: ./run builds and starts it)
set -euo pipefail
top=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
program=${1:-$top/run}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

shoot() { "$program" --home "$top" --screenshot "$work/$1" --skin "$1" 2> >(grep -v propagateSizeHints >&2); }
# keep SKIN SCREEN FILE: at most 1000 pixels wide, 64 colours.
keep() { convert "$work/$1/$2.png" -resize '1000x>' -dither None -colors 64 -strip "PNG8:$3"; }

shoot iMaginary
mkdir -p "$top/readme" "$top/docs/pictures"
while read -r screen name; do keep iMaginary "$screen" "$top/readme/$name.png"; done <<'LIST'
F_Login login
F_MainForm_menu1_btn main
F_Xtcs settings
F_Xtwh maintenance
F_Ckgl_Add warehouse
F_Role_Add role
F_Khgl_Add customer
F_Spxxgl goods
F_Spxxgl_Add article
F_Spxxgl_Add3 lenses
F_Qcjz opening
F_Cgjh purchase
F_Cgjh_Add pick
F_Spxs sale
F_Bjgl quotations
F_Zpgl2 gifts
F_Kccx stock
F_Kcbj.gridZx.chart slow
F_Ysksk_Sele receipt
F_Yyfx analysis
LIST

keep iMaginary F_MainForm_menu1_btn "$top/docs/pictures/main.png"
for skin in 夜间 高对比度; do shoot "$skin"; done
while read -r skin screen name; do keep "$skin" "$screen" "$top/docs/pictures/$name.png"; done <<'LIST'
iMaginary F_Spxxgl list
iMaginary F_Yskgl receivables
iMaginary F_Spxxgl_Add form
iMaginary F_Cgjh empty
iMaginary F_Xtwh tiles
夜间 F_Spxxgl dark
夜间 F_User_Add dark-form
高对比度 F_Spxxgl contrast
高对比度 F_User_Add contrast-form
LIST
du -csh "$top/readme" "$top/docs/pictures" | tail -1
