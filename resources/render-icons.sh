#!/bin/sh
# Renders the icons from their SVG sources, each at its own size and, for high-resolution screens, as
# NAME@2x.png at twice that size. The PNG files are kept in the repository: building needs no renderer.
# Run it after changing a source. It needs rsvg-convert (Debian: librsvg2-bin).
#
# The drawings sit on a grid of 24 px with 3 px left free around them (a sign in a tile may use 1 px),
# lines are 1.5 px wide and light, for dark panels. Edges that are straight lie on whole pixels.
# A state of a button is its drawing in other colours.
set -eu
cd "$(dirname "$0")"

light='#e4e6ea'
ground='#17181b' # behind signs that lie on the picture
accent='#18b7d9'
disabled='#62676f'
danger='#f0476b'
danger_pressed='#b92f4e'


png() { # SVG NAME [SED EXPRESSION]
    mkdir -p "$(dirname "Resource/$2")"
    for scale in 1 2; do
        suffix=$([ $scale = 1 ] || echo @2x)
        sed -e "${3:-}" "svg/$1.svg" | rsvg-convert --zoom $scale --output "Resource/$2$suffix.png"
    done
}

for source in svg/icon*.svg; do
    name=$(basename "$source" .svg)
    case $name in
    icon16_crop_* | icon24_erase | icon24_selectarea | icon8_crop_*) ;; # in states, below
    icon54_mask-*) png "$name" "DefaultMask/$name" ;;
    *) png "$name" "$name" ;;
    esac
done

for name in icon16_crop_add icon24_selectarea; do
    png $name $name-normal
    png $name $name-pressed "s/$light/$accent/g"
    png $name $name-disabled "s/$light/$disabled/g"
done

png icon24_erase icon24_erase_off-normal
png icon24_erase icon24_erase_on-pressed "s/$light/$accent/g"
png icon24_erase icon24_erase_off-disabled "s/$light/$disabled/g"

png icon16_crop_close icon16_crop_close-normal
png icon16_crop_close icon16_crop_close-hover "s/$ground/$danger/g"
png icon16_crop_close icon16_crop_close-pressed "s/$ground/$danger_pressed/g"
png icon16_crop_close icon16_crop_close-disabled "s/$light/$disabled/g"

# One corner is drawn, the others are turned.
turn() { # DEGREES
    printf '%s' "s/<svg \(.*\)>\$/<svg \1><g transform=\"rotate($1 4 4)\">/; s/<\/svg>/<\/g><\/svg>/"
}
png icon8_crop_top_left icon8_crop_top_left
png icon8_crop_top_left icon8_crop_top_right "$(turn 90)"
png icon8_crop_top_left icon8_crop_bottom_right "$(turn 180)"
png icon8_crop_top_left icon8_crop_bottom_left "$(turn 270)"

{
    printf '<RCC>\n    <qresource prefix="/">\n'
    find Resource -name '*.png' | LC_ALL=C sort | sed 's|.*|        <file>&</file>|'
    printf '    </qresource>\n</RCC>\n'
} >ZkSmartKeying.qrc
