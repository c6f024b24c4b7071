#!/bin/sh
# Runs a print server with its socket ("s"), spool and queues below the folder $1. Each queue writes what it receives into
# the file that its device "keep:FILE" names.
set -e
cd "$1"
PATH=$PATH:/usr/sbin
command -v cupsd >/dev/null || { echo "cupsd is not installed" >&2; exit 1; }
# The server's own user must reach the spool.
chmod 755 .
mkdir -p etc/ppd spool/tmp cache state log out bin/backend
chmod 777 out

# The system's own filters, and one back end.
for part in /usr/lib/cups/*/; do
    case $part in */backend/) ;; *) ln -s "${part%/}" bin/ ;; esac
done
cat >bin/backend/keep <<'END'
#!/bin/sh
[ $# -gt 0 ] || exit 0
file=${DEVICE_URI#keep:}
cat ${6:+"$6"} >"$file.part" && mv "$file.part" "$file"
END
chmod 755 bin/backend/keep

cat >etc/cupsd.conf <<END
Listen $1/s
Browsing Off
DefaultAuthType None
WebInterface No
<Location />
Order allow,deny
Allow all
</Location>
<Policy default>
<Limit All>
Order allow,deny
Allow all
</Limit>
</Policy>
END
cat >etc/cups-files.conf <<END
ServerRoot $1/etc
ServerBin $1/bin
RequestRoot $1/spool
TempDir $1/spool/tmp
CacheDir $1/cache
StateDir $1/state
AccessLog $1/log/access
ErrorLog $1/log/error
PageLog $1/log/page
END
exec cupsd -f -c "$1/etc/cupsd.conf" -s "$1/etc/cups-files.conf"
