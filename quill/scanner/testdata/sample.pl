#!/usr/bin/perl
use strict;
# greet the user
my $name = "World\n";
print "Hello, $name" if $name =~ /W/;
my @list = (1, 2, 3);
$h->{key} = 'single';
