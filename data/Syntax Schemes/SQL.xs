// Language: SQL
// SQL of the database console and of .sql files: one case-insensitive
// state for code, strings and quoted names that may span lines, two kinds
// of comment.
State=snormal
State=sstring
State=squoted
State=scomment
State=slinecomment
Token=tnone
Token=tstring
Token=tcomment
Token=tident
Token=tinteger
Token=tfloat
Token=tresword
Token=tresword1
Token=tresword2
Token=tdirective
Delimiters=.,;:()[]<>=+-*/%&|^!~"'@
// Fold regions: BEGIN ... END and CASE ... END blocks.
CollapseStartAtCurrentLine=begin,case
CollapseEnd=end
//
// Names; keywords win over this rule whatever their order.
snormal [a-z_A-Z][a-z_A-Z0-9_$#35]* snormal tident
snormal \[[^\]]*\] snormal tident
snormal @[a-z_A-Z0-9_@#35$]* snormal tdirective
//
// Numbers; the rule written last is tried first.
snormal [0-9]+ snormal tinteger
snormal [0-9]+[eE][+\-]|[0-9]+ snormal tfloat
snormal [0-9]+\.[0-9]*{[eE][+\-]|[0-9]+}| snormal tfloat
snormal \.[0-9]+{[eE][+\-]|[0-9]+}| snormal tfloat
//
// Strings with '' for a quote, and "quoted names"; both may span lines.
snormal \' sstring tstring
sstring [^\']+ sstring tstring
sstring \' snormal tstring
sstring \'\' sstring tstring
snormal " squoted tident
squoted [^"]+ squoted tident
squoted " snormal tident
//
// Comments: -- to the end of the line, /* */ over lines.
snormal -- slinecomment tcomment
slinecomment [#1-#255]* snormal tcomment
slinecomment $ snormal tcomment
snormal /\* scomment tcomment
scomment [^\*]+ scomment tcomment
scomment \* scomment tcomment
scomment \*+/ snormal tcomment
//
// Reserved words. An entry with a blank is matched as one token, but it
// hides the keyword that is its first word whenever the text behind that
// word sorts after the entry's rest; so only phrases whose first word is no
// keyword of its own are listed that way.
snormal 'absolute' snormal tresword
snormal 'action' snormal tresword
snormal 'add' snormal tresword
snormal 'all' snormal tresword
snormal 'alter' snormal tresword
snormal 'and' snormal tresword
snormal 'any' snormal tresword
snormal 'as' snormal tresword
snormal 'asc' snormal tresword
snormal 'authorization' snormal tresword
snormal 'backup' snormal tresword
snormal 'begin' snormal tresword
snormal 'between' snormal tresword
snormal 'break' snormal tresword
snormal 'browse' snormal tresword
snormal 'bulk' snormal tresword
snormal 'by' snormal tresword
snormal 'cascade' snormal tresword
snormal 'case' snormal tresword
snormal 'check' snormal tresword
snormal 'checkpoint' snormal tresword
snormal 'close' snormal tresword
snormal 'clustered' snormal tresword
snormal 'coalesce' snormal tresword
snormal 'collate' snormal tresword
snormal 'column' snormal tresword
snormal 'commit' snormal tresword
snormal 'compute' snormal tresword
snormal 'constraint' snormal tresword
snormal 'contains' snormal tresword
snormal 'continue' snormal tresword
snormal 'convert' snormal tresword
snormal 'create' snormal tresword
snormal 'cross' snormal tresword
snormal 'current' snormal tresword
snormal 'current_date' snormal tresword
snormal 'current_time' snormal tresword
snormal 'current_timestamp' snormal tresword
snormal 'current_user' snormal tresword
snormal 'cursor' snormal tresword
snormal 'database' snormal tresword
snormal 'deallocate' snormal tresword
snormal 'declare' snormal tresword
snormal 'default' snormal tresword
snormal 'delete' snormal tresword
snormal 'deny' snormal tresword
snormal 'desc' snormal tresword
snormal 'distinct' snormal tresword
snormal 'distributed' snormal tresword
snormal 'drop' snormal tresword
snormal 'else' snormal tresword
snormal 'end' snormal tresword
snormal 'errlvl' snormal tresword
snormal 'escape' snormal tresword
snormal 'except' snormal tresword
snormal 'exec' snormal tresword
snormal 'execute' snormal tresword
snormal 'exists' snormal tresword
snormal 'exit' snormal tresword
snormal 'external' snormal tresword
snormal 'fetch' snormal tresword
snormal 'file' snormal tresword
snormal 'fillfactor' snormal tresword
snormal 'for' snormal tresword
snormal 'foreign' snormal tresword
snormal 'freetext' snormal tresword
snormal 'from' snormal tresword
snormal 'full' snormal tresword
snormal 'function' snormal tresword
snormal 'goto' snormal tresword
snormal 'grant' snormal tresword
snormal 'having' snormal tresword
snormal 'holdlock' snormal tresword
snormal 'identity' snormal tresword
snormal 'identity_insert' snormal tresword
snormal 'if' snormal tresword
snormal 'in' snormal tresword
snormal 'index' snormal tresword
snormal 'inner' snormal tresword
snormal 'insert' snormal tresword
snormal 'intersect' snormal tresword
snormal 'into' snormal tresword
snormal 'is' snormal tresword
snormal 'join' snormal tresword
snormal 'key' snormal tresword
snormal 'kill' snormal tresword
snormal 'left' snormal tresword
snormal 'like' snormal tresword
snormal 'limit' snormal tresword
snormal 'merge' snormal tresword
snormal 'national' snormal tresword
snormal 'nocheck' snormal tresword
snormal 'nonclustered' snormal tresword
snormal 'not' snormal tresword
snormal 'null' snormal tresword
snormal 'nullif' snormal tresword
snormal 'of' snormal tresword
snormal 'off' snormal tresword
snormal 'offset' snormal tresword
snormal 'offsets' snormal tresword
snormal 'on' snormal tresword
snormal 'open' snormal tresword
snormal 'option' snormal tresword
snormal 'or' snormal tresword
snormal 'order' snormal tresword
snormal 'outer' snormal tresword
snormal 'over' snormal tresword
snormal 'percent' snormal tresword
snormal 'pivot' snormal tresword
snormal 'plan' snormal tresword
snormal 'primary' snormal tresword
snormal 'print' snormal tresword
snormal 'proc' snormal tresword
snormal 'procedure' snormal tresword
snormal 'public' snormal tresword
snormal 'raiserror' snormal tresword
snormal 'read' snormal tresword
snormal 'readtext' snormal tresword
snormal 'reconfigure' snormal tresword
snormal 'references' snormal tresword
snormal 'replace' snormal tresword
snormal 'replication' snormal tresword
snormal 'restore' snormal tresword
snormal 'restrict' snormal tresword
snormal 'return' snormal tresword
snormal 'returns' snormal tresword
snormal 'revert' snormal tresword
snormal 'revoke' snormal tresword
snormal 'right' snormal tresword
snormal 'rollback' snormal tresword
snormal 'rowcount' snormal tresword
snormal 'rowguidcol' snormal tresword
snormal 'rule' snormal tresword
snormal 'save' snormal tresword
snormal 'schema' snormal tresword
snormal 'select' snormal tresword
snormal 'session_user' snormal tresword
snormal 'set' snormal tresword
snormal 'setuser' snormal tresword
snormal 'shutdown' snormal tresword
snormal 'some' snormal tresword
snormal 'statistics' snormal tresword
snormal 'system_user' snormal tresword
snormal 'table' snormal tresword
snormal 'tablesample' snormal tresword
snormal 'then' snormal tresword
snormal 'to' snormal tresword
snormal 'top' snormal tresword
snormal 'tran' snormal tresword
snormal 'transaction' snormal tresword
snormal 'trigger' snormal tresword
snormal 'truncate' snormal tresword
snormal 'union' snormal tresword
snormal 'unique' snormal tresword
snormal 'unpivot' snormal tresword
snormal 'update' snormal tresword
snormal 'updatetext' snormal tresword
snormal 'use' snormal tresword
snormal 'user' snormal tresword
snormal 'using' snormal tresword
snormal 'values' snormal tresword
snormal 'varying' snormal tresword
snormal 'view' snormal tresword
snormal 'waitfor' snormal tresword
snormal 'when' snormal tresword
snormal 'where' snormal tresword
snormal 'while' snormal tresword
snormal 'with' snormal tresword
snormal 'within' snormal tresword
snormal 'writetext' snormal tresword
snormal 'group by' snormal tresword
snormal 'partition by' snormal tresword
//
// Functions.
snormal 'abs' snormal tresword1
snormal 'avg' snormal tresword1
snormal 'cast' snormal tresword1
snormal 'ceiling' snormal tresword1
snormal 'char_length' snormal tresword1
snormal 'charindex' snormal tresword1
snormal 'count' snormal tresword1
snormal 'datalength' snormal tresword1
snormal 'dateadd' snormal tresword1
snormal 'datediff' snormal tresword1
snormal 'datename' snormal tresword1
snormal 'datepart' snormal tresword1
snormal 'day' snormal tresword1
snormal 'floor' snormal tresword1
snormal 'getdate' snormal tresword1
snormal 'getutcdate' snormal tresword1
snormal 'isnull' snormal tresword1
snormal 'isnumeric' snormal tresword1
snormal 'len' snormal tresword1
snormal 'lower' snormal tresword1
snormal 'ltrim' snormal tresword1
snormal 'max' snormal tresword1
snormal 'min' snormal tresword1
snormal 'month' snormal tresword1
snormal 'newid' snormal tresword1
snormal 'patindex' snormal tresword1
snormal 'power' snormal tresword1
snormal 'replicate' snormal tresword1
snormal 'reverse' snormal tresword1
snormal 'round' snormal tresword1
snormal 'row_number' snormal tresword1
snormal 'rank' snormal tresword1
snormal 'dense_rank' snormal tresword1
snormal 'rtrim' snormal tresword1
snormal 'sign' snormal tresword1
snormal 'space' snormal tresword1
snormal 'sqrt' snormal tresword1
snormal 'stuff' snormal tresword1
snormal 'substring' snormal tresword1
snormal 'sum' snormal tresword1
snormal 'upper' snormal tresword1
snormal 'year' snormal tresword1
snormal 'first_value' snormal tresword1
snormal 'last_value' snormal tresword1
snormal 'lag' snormal tresword1
snormal 'lead' snormal tresword1
snormal 'ntile' snormal tresword1
snormal 'string_agg' snormal tresword1
snormal 'trim' snormal tresword1
snormal 'concat' snormal tresword1
snormal 'format' snormal tresword1
snormal 'iif' snormal tresword1
snormal 'choose' snormal tresword1
//
// Data types.
snormal 'bigint' snormal tresword2
snormal 'binary' snormal tresword2
snormal 'bit' snormal tresword2
snormal 'char' snormal tresword2
snormal 'date' snormal tresword2
snormal 'datetime' snormal tresword2
snormal 'datetime2' snormal tresword2
snormal 'datetimeoffset' snormal tresword2
snormal 'decimal' snormal tresword2
snormal 'float' snormal tresword2
snormal 'image' snormal tresword2
snormal 'int' snormal tresword2
snormal 'integer' snormal tresword2
snormal 'money' snormal tresword2
snormal 'nchar' snormal tresword2
snormal 'ntext' snormal tresword2
snormal 'numeric' snormal tresword2
snormal 'nvarchar' snormal tresword2
snormal 'real' snormal tresword2
snormal 'smalldatetime' snormal tresword2
snormal 'smallint' snormal tresword2
snormal 'smallmoney' snormal tresword2
snormal 'sql_variant' snormal tresword2
snormal 'text' snormal tresword2
snormal 'time' snormal tresword2
snormal 'timestamp' snormal tresword2
snormal 'tinyint' snormal tresword2
snormal 'uniqueidentifier' snormal tresword2
snormal 'varbinary' snormal tresword2
snormal 'varchar' snormal tresword2
snormal 'xml' snormal tresword2
snormal 'boolean' snormal tresword2
snormal 'blob' snormal tresword2
snormal 'clob' snormal tresword2
snormal 'double' snormal tresword2
snormal 'serial' snormal tresword2
