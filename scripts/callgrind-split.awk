# Splits one callgrind dump (written with --compress-strings=no --compress-pos=no)
# by ELF object. With `plugin` and `api` (regular expressions for object paths)
# and optionally `named` (a function-name pattern), it prints, as "key value" lines:
#   total    every instruction of the dump
#   own      instructions of the plug-in's object, plus what it calls outside it
#            that is not the API (the C and maths libraries)
#   api      instructions of the plug-in's calls into the API's object, inclusive
#   named    inclusive instructions of calls to functions matching `named`
#   in <fn>  inclusive instructions of calls into the plug-in from outside, by function
#   desc     the dump's trigger (the client request's text)
# A call's callee object is given by cob= for that call only; without it, the caller's.
/^desc: Trigger: / { sub(/^desc: Trigger: (Client Request: )?/, ""); desc = $0; next }
/^ob=/ { ob = substr($0, 4); next }
/^fn=/ { next }
/^cob=/ { cob = substr($0, 5); next }
/^cfn=/ { cfn = substr($0, 5); next }
/^calls=/ { incall = 1; next }
/^totals: / { total = $2; next }
/^[0-9+*-]/ {
    cost = $2
    if (incall) {
        callee = cob == "" ? ob : cob
        fromPlugin = ob ~ plugin
        toPlugin = callee ~ plugin
        if (fromPlugin && !toPlugin) {
            if (callee ~ api) apicost += cost
            else other += cost
        } else if (!fromPlugin && toPlugin) {
            inbound[cfn] += cost
        }
        if (named != "" && cfn ~ named) namedcost += cost
        incall = 0
        cob = ""
    } else if (ob ~ plugin) {
        self += cost
    }
    next
}
END {
    printf "desc %s\ntotal %d\nown %d\napi %d\nnamed %d\n", desc, total, self + other, apicost, namedcost
    for (f in inbound) printf "in %d %s\n", inbound[f], f
}
