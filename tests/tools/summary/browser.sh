#!/usr/bin/env bash
# browser.sh MPUEVENT SAMPLE OUT: renders the page of a summary in headless Chromium, wide and narrow,
# light and dark. Nothing may stick out of the page and nothing be said on the console. The pages and
# what they look like are left in OUT.
set -euo pipefail
tool=$1 sample=$2 out=$3
mkdir -p "$out"
profile=$(mktemp -d)
trap 'rm -rf "$profile"' EXIT

# The sample as it is, and with stretches cut out, noise, and padding behind.
"$tool" summary "$sample" --html "$out/sample.html" >"$out/sample.txt"
{
  head -c 30000 "$sample"
  head -c 82000 "$sample" | tail -c 40000
  head -c 3000 "$sample" | tr '\000-\377' '\001-\377\000'
  tail -c +95001 "$sample"
  head -c 4000 /dev/zero
} >"$out/damaged.cmap"
"$tool" summary "$out/damaged.cmap" --html "$out/damaged.html" >"$out/damaged.txt" 2>/dev/null || [ $? = 3 ]

chromium_run() {
  chromium --headless --no-sandbox --disable-gpu --disable-background-networking \
    --disable-component-update --disable-sync --no-first-run --hide-scrollbars \
    --allow-file-access-from-files --user-data-dir="$profile" --enable-logging=stderr "$@" \
    2>"$out/console.log"
}

# The page stands in a frame, as windows are not as narrow as telephones.
frame() { # PAGE WIDTH
  cat <<HTML
<!DOCTYPE html><meta name="color-scheme" content="light dark"><body style="margin:0">
<iframe id=f src="$1.html" style="border:0;display:block;width:$2px;height:900px"></iframe>
<p id=found></p><script>
onload = () => {
  const page = f.contentDocument, root = page.documentElement;
  const out = [...page.querySelectorAll('main *')].filter(e => !e.ownerSVGElement
    && e.getBoundingClientRect().right > root.clientWidth + 0.5);
  const height = Math.ceil(root.getBoundingClientRect().height);
  f.style.height = height + 'px';
  found.textContent = 'width ' + root.clientWidth + ' of ' + root.scrollWidth + ', ' + out.length
    + ' outside, ' + page.scripts.length + ' scripts, dark '
    + matchMedia('(prefers-color-scheme: dark)').matches + ', height ' + height;
};
</script>
HTML
}

for page in sample damaged; do
  size=$(wc -c <"$out/$page.html")
  [ "$size" -lt 200000 ] || { echo "$page.html: $size bytes" >&2; exit 1; }
  for width in 1280 400; do
    frame "$page" "$width" >"$out/frame.html"
    for scheme in light dark; do
      [ $scheme = light ] && { preferred=1 dark=false; } || { preferred=0 dark=true; }
      options=(--blink-settings=preferredColorScheme=$preferred)
      found=$(chromium_run "${options[@]}" --dump-dom "file://$out/frame.html" |
        grep -o 'width [0-9]* of [0-9]*, [0-9]* outside.*height [0-9]*' || true)
      [[ $found == "width $width of $width, 0 outside, 0 scripts, dark $dark, height "* ]] || {
        echo "$page at $width, $scheme: ${found:-not rendered}" >&2
        exit 1
      }
      if grep CONSOLE "$out/console.log" >&2; then exit 1; fi
      chromium_run "${options[@]}" --window-size="$((width < 500 ? 500 : width)),${found##* }" \
        --screenshot="$out/$page-$width-$scheme.png" "file://$out/frame.html"
    done
  done
done
rm -f "$out/frame.html" "$out/console.log"
