// What Node has and browsers have not.
declare var module: { exports: object } | undefined;
